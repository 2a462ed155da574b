// SPDX-License-Identifier: Apache-2.0
// "tarnmf diff": what has changed between two scans.
#ifndef TOOLS_TARNMF_DIFF_COMMAND_H
#define TOOLS_TARNMF_DIFF_COMMAND_H

#include "tools/tarnmf/action.h"

namespace tool {

// The exit status is 0 for no difference and 1 for some; a file that cannot be read is wrong usage.
void AddDiff(CLI::App& app, Action& action);

}  // namespace tool

#endif  // TOOLS_TARNMF_DIFF_COMMAND_H
