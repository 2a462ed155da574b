// SPDX-License-Identifier: Apache-2.0
// The errors among check's findings.
#ifndef TOOLS_TARNMF_ERRORS_BY_LOADPOINT_H
#define TOOLS_TARNMF_ERRORS_BY_LOADPOINT_H

#include <vector>

#include "check/check.h"
#include "check/verdict.h"

namespace tool {

// Of each load point of the report its errors, of which none can be allowed. The findings point into
// the report.
std::vector<tarnmf::check::Verdict> ErrorsByLoadPoint(const tarnmf::check::Report& report);

// Whether the library refuses what has these errors; else it only loses records.
bool IsRefused(const tarnmf::check::Verdict& errors);

}  // namespace tool

#endif  // TOOLS_TARNMF_ERRORS_BY_LOADPOINT_H
