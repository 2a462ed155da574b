// SPDX-License-Identifier: Apache-2.0
// What may have been meant by a name that nothing has.
#ifndef TOOLS_TARNMF_NAME_HINT_H
#define TOOLS_TARNMF_NAME_HINT_H

#include <string>
#include <vector>

namespace tool {

// "; did you mean "x"?", or nothing when no name is close.
std::string CloseNamesHint(const std::string& wanted, const std::vector<std::string>& names);

// The same, or else the first few names after `listing`: "; there are: a, b and 3 more".
std::string NameHint(const std::string& wanted, const std::vector<std::string>& names,
                     const char* listing);

}  // namespace tool

#endif  // TOOLS_TARNMF_NAME_HINT_H
