// SPDX-License-Identifier: Apache-2.0
// A scan as text for people.
#ifndef TOOLS_TARNMF_SCAN_REPORT_H
#define TOOLS_TARNMF_SCAN_REPORT_H

#include <string>

#include "tools/tarnmf/scan_view.h"

namespace tool {

// What is wrong with each load point.
void PrintProblems(const ScanView& view);

// How much of everything there is.
void PrintSummary(const ScanView& view);

// One line on the error stream for everything that failed. To be called last.
void PrintFailures(const ScanSession& session);

std::string StepName(const ScanStep& step);
// What the library has said to a step that it refused.
std::string FailureText(const ScanStep& step);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_REPORT_H
