// SPDX-License-Identifier: Apache-2.0
// What check found, as the workflow commands that annotate a change on GitHub.
#ifndef TOOLS_TARNMF_REPORT_GITHUB_H
#define TOOLS_TARNMF_REPORT_GITHUB_H

#include <string>

#include "check/verdict.h"

namespace tool {

// One line a finding.
std::string GitHubReport(const tarnmf::check::Verdict& verdict);

}  // namespace tool

#endif  // TOOLS_TARNMF_REPORT_GITHUB_H
