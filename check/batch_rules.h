// SPDX-License-Identifier: Apache-2.0
// Rules about the records of one load point together.
#ifndef CHECK_BATCH_RULES_H
#define CHECK_BATCH_RULES_H

#include <vector>

#include "check/class_records.h"
#include "check/declared.h"
#include "check/finding.h"
#include "check/installation.h"

namespace tarnmf::check {

// A runnable may start what another load point declares; everything else counts in its own alone.
void CheckBatch(const LoadPoint& loadpoint, const std::vector<ClassRecord>& classes,
                const Declared& declared, std::vector<Finding>& findings);

}  // namespace tarnmf::check

#endif  // CHECK_BATCH_RULES_H
