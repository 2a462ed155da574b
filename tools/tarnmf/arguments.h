// SPDX-License-Identifier: Apache-2.0
// What the program is started with.
#ifndef TOOLS_TARNMF_ARGUMENTS_H
#define TOOLS_TARNMF_ARGUMENTS_H

#include <string>
#include <vector>

namespace tool {

// The arguments of main as UTF-8, the program's name among them.
std::vector<std::string> Arguments(int count, const char* const* arguments);

}  // namespace tool

#endif  // TOOLS_TARNMF_ARGUMENTS_H
