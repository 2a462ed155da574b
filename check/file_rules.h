// SPDX-License-Identifier: Apache-2.0
// Rules about the files of modules.
#ifndef CHECK_FILE_RULES_H
#define CHECK_FILE_RULES_H

#include <vector>

#include "check/files.h"
#include "check/finding.h"
#include "check/installation.h"

namespace tarnmf::check {

// The manager of the host layer is asked for the files, as a process on this machine would.
void CheckFiles(const LoadPoint& loadpoint, Files& files, std::vector<Finding>& findings);

}  // namespace tarnmf::check

#endif  // CHECK_FILE_RULES_H
