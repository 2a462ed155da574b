// SPDX-License-Identifier: Apache-2.0
// What is told of a report: its findings after allowances and settings, none twice. Suggestions for
// files that are no well-formed UTF-8, or that have a document type, are not safe.
#ifndef CHECK_VERDICT_H
#define CHECK_VERDICT_H

#include <cstddef>
#include <string>
#include <vector>

#include "check/check.h"
#include "check/finding.h"
#include "check/settings.h"

namespace tarnmf::check {

struct AllowedFinding {
  Finding finding;
  std::string reason;  // as it was written; empty: none
};

// The sources are those of the report.
struct Verdict {
  std::vector<Finding> findings;        // file by file, in each by their places
  std::vector<AllowedFinding> allowed;  // the same

  std::size_t Count(Severity severity) const;
};

// `levels` win over the settings of a file's directory. The findings are taken out of the report.
Verdict Judge(Report& report, SettingsFinder& settings, const Levels& levels);

}  // namespace tarnmf::check

#endif  // CHECK_VERDICT_H
