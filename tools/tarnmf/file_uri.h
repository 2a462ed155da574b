// SPDX-License-Identifier: Apache-2.0
// Files as editors and other tools name them.
#ifndef TOOLS_TARNMF_FILE_URI_H
#define TOOLS_TARNMF_FILE_URI_H

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// Where "\" separates as well, paths begin with drives or, behind two separators, with hosts.
constexpr bool kHasDrives = std::filesystem::path::preferred_separator != '/';

// Nothing for a URI that names no file of this machine, such as that of a text without a name.
std::optional<std::string> PathOfUri(std::string_view uri, bool hasDrives = kHasDrives);

// "/a/b" is file:///a/b and, where there are drives and shares, "c:\a" is file:///c:/a and
// "\\host\share\a" is file://host/share/a. Every other path is relative and becomes a reference that is
// relative, too.
std::string UriOfPath(std::string_view path, bool hasDrives = kHasDrives);

}  // namespace tool

#endif  // TOOLS_TARNMF_FILE_URI_H
