#include "tools/tarnmf/scan_command.h"

#include <fmt/format.h>

#include "tools/tarnmf/scan_json.h"
#include "tools/tarnmf/scan_report.h"

namespace tool {

int RunScan(const ScanOptions& options) {
  const ScanSession session(options);
  if (options.json) {
    fmt::print("{}", JsonText(ToJson(session)));
  } else {
    PrintReport(session);
  }
  PrintFailures(session);
  return session.Failed() ? 1 : 0;
}

}  // namespace tool
