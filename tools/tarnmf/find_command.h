// SPDX-License-Identifier: Apache-2.0
// "tarnmf find": one question to the repository of a scan.
#ifndef TOOLS_TARNMF_FIND_COMMAND_H
#define TOOLS_TARNMF_FIND_COMMAND_H

#include <cstdint>
#include <string>

#include "tools/tarnmf/scan_session.h"

namespace tool {

struct FindClassOptions {
  ScanOptions scan;
  std::string name;
  std::string scope;  // empty: none
  std::int16_t version = 0;
  std::int16_t limit = INT16_MAX;
};

struct FindServiceOptions {
  ScanOptions scan;
  std::string id;
  std::string in;  // path of the load point; empty: all of them
};

// Both return the exit status.
int RunFindClass(const FindClassOptions& options);
int RunFindService(const FindServiceOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_FIND_COMMAND_H
