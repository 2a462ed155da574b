// SPDX-License-Identifier: Apache-2.0
// What check has to say about the load points of a scan.
#ifndef TOOLS_TARNMF_SCAN_FINDINGS_H
#define TOOLS_TARNMF_SCAN_FINDINGS_H

#include <cstddef>
#include <string>
#include <vector>

#include "check/check.h"
#include "check/verdict.h"

namespace tool {

// What is checked: all that one process reads.
struct ScannedLoadPoints {
  std::string loadpoint;                   // of the process; empty: none
  std::vector<std::string> files;          // of the process; empty: all in its load point
  std::vector<std::string> installations;  // those that are directories
};

class ScanFindings {
 public:
  explicit ScanFindings(const ScannedLoadPoints& scanned);

  // Of everything that was checked, as "tarnmf check" counts it.
  const tarnmf::check::Verdict& All() const { return verdict_; }

  // The errors alone, of which none can be allowed.
  tarnmf::check::Verdict ErrorsOfProcess() const;
  const tarnmf::check::Verdict& ErrorsOfInstallation(std::size_t number) const {
    return errors_[firstInstallation_ + number];
  }

 private:
  tarnmf::check::DiskFiles files_;
  tarnmf::check::Report report_;
  tarnmf::check::Verdict verdict_;
  std::vector<tarnmf::check::Verdict> errors_;  // by load point
  // The report's load points come in this order: a process without FILEs, installations, and then,
  // by their directories, the files.
  std::size_t firstInstallation_;
  std::size_t firstFile_;
};

}  // namespace tool

#endif  // TOOLS_TARNMF_SCAN_FINDINGS_H
