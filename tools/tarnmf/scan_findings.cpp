#include "tools/tarnmf/scan_findings.h"

#include <unordered_map>

namespace tool {
namespace {

using namespace tarnmf::check;

Request RequestOf(const ScannedLoadPoints& scanned) {
  Request request;
  if (scanned.files.empty()) request.loadpoint = scanned.loadpoint;
  request.paths = scanned.installations;
  request.paths.insert(request.paths.end(), scanned.files.begin(), scanned.files.end());
  return request;
}

bool IsSame(const Finding& left, const Finding& right) {
  return left.rule == right.rule && left.place.source == right.place.source &&
         left.place.span == right.place.span && left.message == right.message;
}

// The numbers of the load points that a source is part of: of those that name one directory twice,
// the manifests are the same.
std::unordered_map<const Source*, std::vector<std::size_t>> Owners(const Report& report) {
  std::unordered_map<const Source*, std::vector<std::size_t>> owners;
  for (std::size_t i = 0; i < report.loadpoints.size(); ++i) {
    const LoadPoint& loadpoint = *report.loadpoints[i];
    owners[&loadpoint.directory].push_back(i);
    if (loadpoint.layout != nullptr) owners[&loadpoint.layout->source].push_back(i);
    for (const auto& unreadable : loadpoint.unreadable)
      owners[unreadable.get()].push_back(i);
    for (const auto& manifest : loadpoint.manifests)
      owners[&manifest->source].push_back(i);
  }
  return owners;
}

}  // namespace

ScanFindings::ScanFindings(const ScannedLoadPoints& scanned)
    : report_(Check(RequestOf(scanned), files_)),
      errors_(report_.loadpoints.size()),
      firstInstallation_(scanned.files.empty() && !scanned.loadpoint.empty() ? 1 : 0),
      firstFile_(firstInstallation_ + scanned.installations.size()) {
  SettingsFinder settings(files_);
  verdict_ = Judge(report_, settings, {});
  const auto owners = Owners(report_);
  for (const Finding& finding : report_.findings) {
    if (finding.severity != Severity::kError) continue;
    for (const std::size_t owner : owners.at(finding.place.source)) {
      std::vector<Finding>& errors = errors_[owner].findings;
      if (errors.empty() || !IsSame(errors.back(), finding)) errors.push_back(finding);
    }
  }
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
