// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_summary.h"

#include <algorithm>

namespace tool {
namespace {

std::size_t Count(const StepView& step, ClassAnswer::Kind kind) {
  return static_cast<std::size_t>(
      std::count_if(step.Answers().begin(), step.Answers().end(),
                    [&](const ClassAnswer& answer) { return answer.kind == kind; }));
}

constexpr std::size_t ScanSummary::*kNumbers[] = {&ScanSummary::loadpoints, &ScanSummary::failed,
                                                  &ScanSummary::manifests,  &ScanSummary::modules,
                                                  &ScanSummary::unresolved, &ScanSummary::classes,
                                                  &ScanSummary::hidden,     &ScanSummary::unhosted,
                                                  &ScanSummary::runnables,  &ScanSummary::preloads};
static_assert(sizeof kNumbers / sizeof *kNumbers == sizeof(ScanSummary) / sizeof(std::size_t));

}  // namespace

ScanSummary Summarize(const StepView& view) {
  const ScanStep& step = view.Step();
  ScanSummary summary;
  summary.failed = step.Failed() ? 1 : 0;
  summary.manifests = step.manifests.size();
  summary.preloads = step.registered.preloads.end - step.registered.preloads.begin;
  if (step.data == nullptr) return summary;
  summary.loadpoints = 1;
  summary.modules = static_cast<std::size_t>(step.data->modules.count);
  summary.unresolved = view.UnresolvedModules().size();
  summary.classes = static_cast<std::size_t>(step.data->classes.count);
  summary.hidden = Count(view, ClassAnswer::Kind::kAnother);
  summary.unhosted = Count(view, ClassAnswer::Kind::kUnknownHost);
  summary.runnables = static_cast<std::size_t>(step.data->runnables.count);
  return summary;
}

ScanSummary Summarize(const ScanView& view) {
  ScanSummary sum;
  for (const StepView& step : view.Steps()) {
    const ScanSummary part = Summarize(step);
    for (std::size_t ScanSummary::*number : kNumbers)
      sum.*number += part.*number;
  }
  return sum;
}

}  // namespace tool
