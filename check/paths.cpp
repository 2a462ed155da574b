// SPDX-License-Identifier: Apache-2.0
#include "check/paths.h"

#include "platform/filesystem.h"
#include "platform/host/system_path.h"
#include "platform/runtime.h"

namespace tarnmf::check {
namespace {

namespace fs = std::filesystem;

int Compare(const std::string& left, const std::string& right) {
  const btkFSPath paths[] = {btkFSPath(left.c_str()), btkFSPath(right.c_str())};
  const btkWChar* const texts[] = {paths[0].WideText(), paths[1].WideText()};
  return Cmp_cWPaths_Safe(&texts[0], &texts[1]);
}

}  // namespace

std::string PathIn(const std::string& directory, const std::string& name) {
  btkFSEntry file(directory.c_str());
  file /= name.c_str();
  return file.Path().NarrowText();
}

std::string DirectoryOf(const std::string& path) {
  return NarrowPath(SystemPath(path).parent_path());
}

std::string FileNameOf(const std::string& path) {
  return NarrowPath(SystemPath(path).filename());
}

bool IsAbsolutePath(const std::string& path) {
  return SystemPath(path).is_absolute();
}

std::string AbsolutePath(const std::string& path) {
  return NarrowPathLike(path,
                        fs::absolute(SystemPath(path.empty() ? "." : path)).lexically_normal());
}

bool IsManifestFile(const std::string& path) {
  return btkZString(NarrowPath(SystemPath(path).extension()).c_str()) == BTK_W(".tmfx");
}

bool IsLayoutFile(const std::string& path) {
  return btkZString(FileNameOf(path).c_str()) == BTK_W(".installed");
}

bool PathLess::operator()(const std::string& left, const std::string& right) const {
  return Compare(left, right) < 0;
}

bool IsSamePath(const std::string& left, const std::string& right) {
  return Compare(left, right) == 0;
}

}  // namespace tarnmf::check
