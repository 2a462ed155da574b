// SPDX-License-Identifier: Apache-2.0
// "tarnmf why preload": whether a process loads a library ahead of use, condition by condition.
#ifndef TOOLS_TARNMF_WHY_PRELOAD_H
#define TOOLS_TARNMF_WHY_PRELOAD_H

#include <string>
#include <vector>

#include "tools/tarnmf/checked_process.h"

namespace tool {

struct WhyPreloadOptions {
  ProcessOptions process;
  std::string module;                // its id
  std::string service;               // id of the service that the process is in; empty: none
  std::string program;               // file name of its executable
  std::vector<std::string> options;  // "ID=VALUE"
  bool json = false;
};

// Returns the exit status.
int RunWhyPreload(const WhyPreloadOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_WHY_PRELOAD_H
