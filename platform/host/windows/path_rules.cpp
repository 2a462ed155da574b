// SPDX-License-Identifier: Apache-2.0
#include "platform/host/path_rules.h"

#include <windows.h>
#include <algorithm>

// The table by which the file system compares names; no other one agrees with it in every letter.
extern "C" __declspec(dllimport) WCHAR NTAPI RtlUpcaseUnicodeChar(WCHAR unit);

namespace {

template <class Char>
bool IsDrive(std::basic_string_view<Char> path) {
  if (path.size() < 2 || path[1] != Char{':'}) return false;
  return (path[0] >= Char{'a'} && path[0] <= Char{'z'}) ||
         (path[0] >= Char{'A'} && path[0] <= Char{'Z'});
}

// Behind the component that begins there.
template <class Char>
std::size_t EndOfComponent(std::basic_string_view<Char> path, std::size_t begin) {
  while (begin < path.size() && !IsPathSeparator(path[begin]))
    ++begin;
  return begin;
}

template <class Char>
std::size_t RootLengthOf(std::basic_string_view<Char> path) {
  const auto withSeparator = [path](std::size_t end) {
    return end < path.size() && IsPathSeparator(path[end]) ? end + 1 : end;
  };
  if (IsDrive(path)) return withSeparator(2);
  const bool isShare = path.size() > 2 && IsPathSeparator(path[0]) && IsPathSeparator(path[1]) &&
                       !IsPathSeparator(path[2]);
  if (!isShare) return withSeparator(0);
  const std::size_t server = EndOfComponent(path, 2);
  return withSeparator(EndOfComponent(path, std::min(server + 1, path.size())));
}

}  // namespace

bool IsPathSeparator(char32_t unit) {
  return unit == U'/' || unit == U'\\';
}

std::size_t RootLength(std::string_view path) {
  return RootLengthOf(path);
}
std::size_t RootLength(std::basic_string_view<btkWChar> path) {
  return RootLengthOf(path);
}

// The system drops blanks and dots at the end of a component.
bool IsParentComponent(std::string_view component) {
  return component.starts_with("..") && component.find_first_not_of(". ") == component.npos;
}

btkWChar FoldedInPath(btkWChar unit) {
  if (unit == L'/') return L'\\';
  if (unit < 0x80) return unit >= L'a' && unit <= L'z' ? static_cast<btkWChar>(unit - 0x20) : unit;
  return RtlUpcaseUnicodeChar(unit);
}
