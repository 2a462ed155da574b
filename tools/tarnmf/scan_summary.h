// SPDX-License-Identifier: Apache-2.0
// What a scan comes to, in numbers.
#ifndef TOOLS_TARNMF_SCAN_SUMMARY_H
#define TOOLS_TARNMF_SCAN_SUMMARY_H

#include <cstddef>

#include "tools/tarnmf/scan_view.h"

namespace tool {

struct ScanSummary {
  std::size_t loadpoints = 0;  // those that were filed
  std::size_t failed = 0;      // those that were not, or not as a whole
  std::size_t manifests = 0;
  std::size_t modules = 0;
  std::size_t unresolved = 0;
  std::size_t classes = 0;
  std::size_t hidden = 0;    // another one answers in their place
  std::size_t unhosted = 0;  // the service that they name as their host is not there
  std::size_t runnables = 0;
  std::size_t preloads = 0;
};

ScanSummary Summarize(const StepView& step);
ScanSummary Summarize(const ScanView& view);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_SUMMARY_H
