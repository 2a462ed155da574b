// SPDX-License-Identifier: Apache-2.0
// Paths of this layer, which are UTF-8, and those of the standard library, which has the system's own
// encoding.
#ifndef PLATFORM_HOST_SYSTEM_PATH_H
#define PLATFORM_HOST_SYSTEM_PATH_H

#include <filesystem>
#include <string>
#include <type_traits>

#include "platform/filesystem.h"

// The separators stay as they are.
inline std::filesystem::path SystemPath(const std::string& narrow) {
  if constexpr (std::is_same_v<std::filesystem::path::value_type, char>) {
    return narrow;
  } else {
    return btkFSPath(narrow.c_str()).WideText();
  }
}

inline std::string NarrowPath(const std::filesystem::path& path) {
  if constexpr (std::is_same_v<std::filesystem::path::value_type, char>) {
    return path.string();
  } else {
    return btkFSPath(path.c_str()).NarrowText();
  }
}

// The standard library likes to write separators in one way; this writes those that `written` has.
inline std::string NarrowPathLike(const std::string& written, const std::filesystem::path& path) {
  using Path = std::filesystem::path;
  if (written.find(static_cast<char>(Path::preferred_separator)) != std::string::npos)
    return NarrowPath(path);
  return NarrowPath(path.generic_string<Path::value_type>());
}

#endif  // PLATFORM_HOST_SYSTEM_PATH_H
