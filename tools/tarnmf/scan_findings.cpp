// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_findings.h"

#include "tools/tarnmf/errors_by_loadpoint.h"

namespace tool {
namespace {

using namespace tarnmf::check;

Request RequestOf(const ScannedLoadPoints& scanned) {
  Request request;
  request.asksLibrary = false;  // it has just been asked
  if (scanned.files.empty()) request.loadpoint = scanned.loadpoint;
  request.paths = scanned.installations;
  request.paths.insert(request.paths.end(), scanned.files.begin(), scanned.files.end());
  return request;
}

}  // namespace

ScanFindings::ScanFindings(const ScannedLoadPoints& scanned)
    : report_(Check(RequestOf(scanned), files_)),
      errors_(ErrorsByLoadPoint(report_)),
      firstInstallation_(scanned.files.empty() && !scanned.loadpoint.empty() ? 1 : 0),
      firstFile_(firstInstallation_ + scanned.installations.size()) {
  SettingsFinder settings(files_);
  verdict_ = Judge(report_, settings, {});
}

Verdict ScanFindings::ErrorsOfProcess() const {
  if (firstInstallation_ > 0) return errors_.front();
  Verdict errors;
  for (std::size_t i = firstFile_; i < errors_.size(); ++i) {
    const std::vector<Finding>& more = errors_[i].findings;
    errors.findings.insert(errors.findings.end(), more.begin(), more.end());
  }
  return errors;
}

}  // namespace tool
