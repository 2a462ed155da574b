// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/stored_files.h"

#include <system_error>
#include <utility>

#include "platform/host/system_path.h"

namespace tool::lsp {

namespace fs = std::filesystem;

std::optional<StoredFiles::Stamp> StoredFiles::StampOf(const std::string& path) {
  std::error_code failure;
  const fs::path file = SystemPath(path);
  const Stamp stamp{fs::last_write_time(file, failure), fs::file_size(file, failure)};
  return failure ? std::nullopt : std::optional(stamp);
}

std::shared_ptr<const tarnmf::check::Manifest> StoredFiles::ReadManifest(const std::string& path) {
  const std::optional<Stamp> stamp = StampOf(path);
  const auto known = manifests_.find(path);
  if (known != manifests_.end() && stamp == known->second.stamp) return known->second.manifest;
  std::optional<std::string> bytes = stamp ? disk_.Read(path) : std::nullopt;
  if (!bytes) {
    if (known != manifests_.end()) manifests_.erase(known);
    return nullptr;
  }
  std::shared_ptr<const tarnmf::check::Manifest> manifest =
      tarnmf::check::ReadManifest(path, *std::move(bytes));
  manifests_.insert_or_assign(path, StoredManifest{*stamp, manifest});
  return manifest;
}

void StoredFiles::ForgetUnused() {
  std::erase_if(manifests_,
                [](const auto& entry) { return entry.second.manifest.use_count() == 1; });
}

}  // namespace tool::lsp
