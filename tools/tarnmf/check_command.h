// SPDX-License-Identifier: Apache-2.0
// "tarnmf check": the mistakes in manifests and layout files, all in one run.
#ifndef TOOLS_TARNMF_CHECK_COMMAND_H
#define TOOLS_TARNMF_CHECK_COMMAND_H

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

struct CheckOptions {
  std::string loadpoint;           // of the process; empty: as the settings say
  std::vector<std::string> paths;  // installations, and single files
  std::vector<std::string> rules;  // "NAME=LEVEL"
  std::size_t most = 10;           // findings of one rule that the text form shows
  bool strict = false;
  bool json = false;
  bool sarif = false;
  bool github = false;
  bool fix = false;
  bool diff = false;
};

// Returns the exit status. Throws std::invalid_argument for wrong usage, before anything is printed.
int RunCheck(const CheckOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_CHECK_COMMAND_H
