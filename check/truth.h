// SPDX-License-Identifier: Apache-2.0
// What the library itself says to the manifests of a load point.
#ifndef CHECK_TRUTH_H
#define CHECK_TRUTH_H

#include <vector>

#include "check/finding.h"
#include "check/installation.h"

namespace tarnmf::check {

// Loads the manifests and hands them to a publisher, which registers nothing, and compares the
// outcome with `findings`, which are all those of the load point: a code that none of them has, or an
// error that the library does not mind, is added to them. What the library says of a text that nobody
// else can decode is added, too. Nothing is loaded of manifests that depend on something outside or
// grow when they are read.
void CompareWithLibrary(const LoadPoint& loadpoint, std::vector<Finding>& findings);

}  // namespace tarnmf::check

#endif  // CHECK_TRUTH_H
