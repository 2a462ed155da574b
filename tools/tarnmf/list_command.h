// SPDX-License-Identifier: Apache-2.0
// "tarnmf list": what the repository of a scan holds.
#ifndef TOOLS_TARNMF_LIST_COMMAND_H
#define TOOLS_TARNMF_LIST_COMMAND_H

#include <string>

#include "tools/tarnmf/scan_session.h"

namespace tool {

// `what` is "loadpoints", "classes" or "services". Returns the exit status.
int RunList(const ScanOptions& options, const std::string& what);

}  // namespace tool

#endif  // TOOLS_TARNMF_LIST_COMMAND_H
