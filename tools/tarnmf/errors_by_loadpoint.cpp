// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/errors_by_loadpoint.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace tool {
namespace {

using namespace tarnmf::check;

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

std::vector<Verdict> ErrorsByLoadPoint(const Report& report) {
  std::vector<Verdict> errors(report.loadpoints.size());
  const auto owners = Owners(report);
  for (const Finding& finding : report.findings) {
    if (finding.severity != Severity::kError) continue;
    for (const std::size_t owner : owners.at(finding.place.source)) {
      std::vector<Finding>& own = errors[owner].findings;
      if (own.empty() || !IsSame(own.back(), finding)) own.push_back(finding);
    }
  }
  return errors;
}

bool IsRefused(const Verdict& errors) {
  return std::any_of(errors.findings.begin(), errors.findings.end(),
                     [](const Finding& error) { return error.code != kBtkOk; });
}

}  // namespace tool
