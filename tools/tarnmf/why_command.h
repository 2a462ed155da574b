// SPDX-License-Identifier: Apache-2.0
// "tarnmf why": what a query or a preload condition comes to, step by step.
#ifndef TOOLS_TARNMF_WHY_COMMAND_H
#define TOOLS_TARNMF_WHY_COMMAND_H

#include "tools/tarnmf/action.h"

namespace tool {

// "why class" and "why preload". The exit status is 0 when a class is found or a library is loaded
// ahead, else 1.
void AddWhy(CLI::App& app, Action& action);

}  // namespace tool

#endif  // TOOLS_TARNMF_WHY_COMMAND_H
