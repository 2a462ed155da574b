// SPDX-License-Identifier: Apache-2.0
#include "platform/host/path_rules.h"

bool IsPathSeparator(char32_t unit) {
  return unit == U'/';
}

std::size_t RootLength(std::string_view path) {
  return path.starts_with('/') ? 1 : 0;
}
std::size_t RootLength(std::basic_string_view<btkWChar> path) {
  return path.starts_with(BTK_W('/')) ? 1 : 0;
}

bool IsParentComponent(std::string_view component) {
  return component == "..";
}

btkWChar FoldedInPath(btkWChar unit) {
  return unit;
}
