// SPDX-License-Identifier: Apache-2.0
// What check found, as SARIF 2.1.0.
#ifndef TOOLS_TARNMF_REPORT_SARIF_H
#define TOOLS_TARNMF_REPORT_SARIF_H

#include "check/verdict.h"
#include "tools/tarnmf/record_json.h"

namespace tool {

// A log of one run. What is allowed stands in it as suppressed.
Json SarifReport(const tarnmf::check::Verdict& verdict);

}  // namespace tool

#endif  // TOOLS_TARNMF_REPORT_SARIF_H
