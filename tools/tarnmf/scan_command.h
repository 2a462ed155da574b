// SPDX-License-Identifier: Apache-2.0
// "tarnmf scan": everything that a process with its load points reads, registers and files.
#ifndef TOOLS_TARNMF_SCAN_COMMAND_H
#define TOOLS_TARNMF_SCAN_COMMAND_H

#include "tools/tarnmf/scan_session.h"

namespace tool {

struct ScanReportOptions {
  ScanOptions scan;
  bool all = false;  // not the problems alone
};

// Returns the exit status.
int RunScan(const ScanReportOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_COMMAND_H
