// SPDX-License-Identifier: Apache-2.0
// How commands put themselves into the command line.
#ifndef TOOLS_TARNMF_ACTION_H
#define TOOLS_TARNMF_ACTION_H

#include <CLI/CLI.hpp>
#include <functional>

namespace tool {

// What to do once the command line has been read; returns the exit status.
using Action = std::function<int()>;

}  // namespace tool

#endif  // TOOLS_TARNMF_ACTION_H
