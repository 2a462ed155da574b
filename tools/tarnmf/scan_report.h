// A scan as text for people.
#ifndef TOOLS_TARNMF_SCAN_REPORT_H
#define TOOLS_TARNMF_SCAN_REPORT_H

#include "tools/tarnmf/scan_session.h"

namespace tool {

void PrintReport(const ScanSession& session);

// One line on the error stream for every step that failed or was odd. To be called last.
void PrintFailures(const ScanSession& session);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_REPORT_H
