#include "scan_command.h"

#include <fmt/format.h>

#include "scan_json.h"
#include "scan_report.h"

namespace tool {

int RunScan(const ScanOptionsT& options) {
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
