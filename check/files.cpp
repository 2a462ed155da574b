// SPDX-License-Identifier: Apache-2.0
#include "check/files.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

#include "platform/filesystem.h"
#include "platform/host/system_path.h"

namespace tarnmf::check {

namespace fs = std::filesystem;

namespace {

// Decoding makes three bytes of one at most, and places count in 32 bits.
constexpr std::uintmax_t kMostBytes = 1'000'000'000;

}  // namespace

// Nothing else than a regular file is opened: reading a pipe or a device might never end.
std::optional<std::string> DiskFiles::Read(const std::string& path) {
  if (!IsFile(path)) return std::nullopt;
  std::error_code failure;
  if (fs::file_size(SystemPath(path), failure) > kMostBytes || failure) return std::nullopt;
  std::ifstream file(SystemPath(path), std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream bytes;
  // Copying nothing counts as a failure.
  if (file.peek() != std::ifstream::traits_type::eof()) bytes << file.rdbuf();
  return file.bad() || bytes.fail() ? std::nullopt : std::optional(std::move(bytes).str());
}

std::shared_ptr<const Manifest> DiskFiles::ReadManifest(const std::string& path) {
  const auto [place, isNew] = manifests_.try_emplace(path);
  if (isNew) {
    if (std::optional<std::string> bytes = Read(path)) {
      place->second = check::ReadManifest(path, *std::move(bytes));
    }
  }
  return place->second;
}

ManifestList DiskFiles::ManifestsIn(const std::string& directory) {
  const btkFSList list(btkFSEntry(directory.c_str()), "*.tmfx");
  ManifestList manifests;
  for (unsigned i = 0; i < list.Count(); ++i)
    manifests.names.emplace_back(list[i].GetTail().Text());
  for (unsigned i = 0; i < list.ProblemCount(); ++i) {
    manifests.unlisted.push_back({list.ProblemPlace(i).Path().NarrowText(), list.ProblemText(i)});
  }
  return manifests;
}

std::optional<std::string> DiskFiles::WhyUnreadable(const std::string& name) {
  const fs::path path = SystemPath(name);
  std::error_code failure;
  if (fs::symlink_status(path, failure).type() == fs::file_type::not_found) return std::nullopt;
  const fs::file_status status = fs::status(path, failure);
  if (status.type() == fs::file_type::not_found) return "the link leads nowhere";
  if (failure) return failure.message();
  if (fs::is_directory(status)) return "this is a directory";
  if (!fs::is_regular_file(status)) return "this is no regular file";
  if (fs::file_size(path, failure) > kMostBytes && !failure) return "it has more than a gigabyte";
  errno = 0;
  if (std::ifstream(path, std::ios::binary)) return std::nullopt;
  return std::generic_category().message(errno);
}

bool DiskFiles::IsFile(const std::string& path) {
  std::error_code ignored;
  return fs::is_regular_file(SystemPath(path), ignored);
}

bool DiskFiles::IsDirectory(const std::string& path) {
  std::error_code ignored;
  return fs::is_directory(SystemPath(path), ignored);
}

std::vector<std::string> DiskFiles::NamesIn(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator file(SystemPath(directory), error), end; !error && file != end;
       file.increment(error))
    names.push_back(NarrowPath(file->path().filename()));
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace tarnmf::check
