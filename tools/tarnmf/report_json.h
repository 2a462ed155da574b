// SPDX-License-Identifier: Apache-2.0
// What check found, for programs.
#ifndef TOOLS_TARNMF_REPORT_JSON_H
#define TOOLS_TARNMF_REPORT_JSON_H

#include "check/verdict.h"
#include "tools/tarnmf/record_json.h"

namespace tool {

// An array with one object a finding.
Json JsonReport(const tarnmf::check::Verdict& verdict);

}  // namespace tool

#endif  // TOOLS_TARNMF_REPORT_JSON_H
