// What the library itself says to the manifests of a load point.
#ifndef CHECK_TRUTH_H
#define CHECK_TRUTH_H

#include <vector>

#include "check/finding.h"
#include "check/installation.h"

namespace tarnmf::check {

// Loads the manifests and hands them to a publisher, which registers nothing, and compares the
// outcome with the findings: a code that none of them has, or an error that the library does not
// mind, is told. `found` are all findings of the load point. Nothing is loaded of manifests that
// depend on something outside or grow when they are read.
void CompareWithLibrary(const LoadPoint& loadpoint, const std::vector<Finding>& found,
                        std::vector<Finding>& findings);

}  // namespace tarnmf::check

#endif  // CHECK_TRUTH_H
