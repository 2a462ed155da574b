// SPDX-License-Identifier: Apache-2.0
// What the system's paths look like.
#ifndef PLATFORM_HOST_PATH_RULES_H
#define PLATFORM_HOST_PATH_RULES_H

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/types.h"

bool IsPathSeparator(char32_t unit);

// The units at the start that say where a path begins rather than name something below it: "/" and,
// on some systems, a drive or a share, with the separator behind it.
std::size_t RootLength(std::string_view path);
std::size_t RootLength(std::basic_string_view<btkWChar> path);

// True for "..", however the system lets it be written.
bool IsParentComponent(std::string_view component);

// Units that the system takes for the same one in paths become equal: letters of either case, all
// separators.
btkWChar FoldedInPath(btkWChar unit);

// The components one below the other, with the separator that the first one has; empty ones are left
// out. What stands below another one cannot lead out of it by being absolute.
std::string JoinPath(std::initializer_list<std::string_view> components);

#endif  // PLATFORM_HOST_PATH_RULES_H
