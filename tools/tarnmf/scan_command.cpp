// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_command.h"

#include <fmt/format.h>

#include "tools/tarnmf/scan_json.h"
#include "tools/tarnmf/scan_listing.h"
#include "tools/tarnmf/scan_report.h"

namespace tool {

int RunScan(const ScanReportOptions& options) {
  const ScanSession session(options.scan);
  const ScanView view(session);
  if (options.scan.json) {
    fmt::print("{}", FormText(json_format::kScan, ToJson(view)));
  } else {
    PrintProblems(view);
    if (options.all) PrintListing(view);
    PrintSummary(view);
  }
  PrintFailures(session);
  return session.Failed() ? 1 : 0;
}

}  // namespace tool
