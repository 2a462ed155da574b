// SPDX-License-Identifier: Apache-2.0
// "tarnmf graph": the load points of a process as a graph.
#ifndef TOOLS_TARNMF_GRAPH_COMMAND_H
#define TOOLS_TARNMF_GRAPH_COMMAND_H

#include "tools/tarnmf/action.h"

namespace tool {

void AddGraph(CLI::App& app, Action& action);

}  // namespace tool

#endif  // TOOLS_TARNMF_GRAPH_COMMAND_H
