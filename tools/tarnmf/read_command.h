// SPDX-License-Identifier: Apache-2.0
// "tarnmf read": manifest files as one load point, printed as JSON.
#ifndef TOOLS_TARNMF_READ_COMMAND_H
#define TOOLS_TARNMF_READ_COMMAND_H

#include <string>
#include <vector>

namespace tool {

struct ReadOptions {
  std::string loadpoint;  // empty: none
  std::vector<std::string> files;
};

// Returns the exit status.
int RunRead(const ReadOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_READ_COMMAND_H
