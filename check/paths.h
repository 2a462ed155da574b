// SPDX-License-Identifier: Apache-2.0
// Paths as people write them: texts whose separators stay as they are.
#ifndef CHECK_PATHS_H
#define CHECK_PATHS_H

#include <string>

namespace tarnmf::check {

// The path of a file in a directory, as people would write it.
std::string PathIn(const std::string& directory, const std::string& name);

// Empty for a file of the working directory.
std::string DirectoryOf(const std::string& path);
// The last component; empty behind a separator.
std::string FileNameOf(const std::string& path);

bool IsAbsolutePath(const std::string& path);

// Seen from the working directory, without "." and "..".
std::string AbsolutePath(const std::string& path);

// By their names, whether they are there or not.
bool IsManifestFile(const std::string& path);
bool IsLayoutFile(const std::string& path);

// The order of paths that the system tells apart; one separator at the end does not count.
struct PathLess {
  bool operator()(const std::string& left, const std::string& right) const;
};
bool IsSamePath(const std::string& left, const std::string& right);

}  // namespace tarnmf::check

#endif  // CHECK_PATHS_H
