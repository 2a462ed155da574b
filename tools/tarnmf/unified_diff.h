// SPDX-License-Identifier: Apache-2.0
// The difference of two texts as patches show it.
#ifndef TOOLS_TARNMF_UNIFIED_DIFF_H
#define TOOLS_TARNMF_UNIFIED_DIFF_H

#include <string>
#include <string_view>

namespace tool {

// With three lines around each change; empty for equal texts. Takes n log n time in the lines.
std::string UnifiedDiff(const std::string& path, std::string_view before, std::string_view after);

}  // namespace tool

#endif  // TOOLS_TARNMF_UNIFIED_DIFF_H
