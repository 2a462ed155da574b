// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_view.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <limits>
#include <map>

#include "platform/runtime.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using Kind = ClassAnswer::Kind;

std::string ComesFirst(liMfRepository& repository, const MfSvcResolveT& entry) {
  const MfLdpDataT* const data = repository.FindLoadpoint(&entry.ids[kMfLoadpointId]);
  const std::string path = data != nullptr ? Narrow(data->loadpoint) : "";
  return fmt::format("service version {} in {} comes first", entry.record->svcVersion,
                     path.empty() ? "the process" : path);
}

// A class that is not filed, since its host is not there.
ClassAnswer WithoutHost(const MfIntfClassT& record, const MfSvcResolveT* entry) {
  if (record.xsname != nullptr) {
    return {Kind::kUnknownHost, entry,
            fmt::format("not filed: its hosting service \"{}\" is none of this load point",
                        record.xsname)};
  }
  if (!btkUniIdIsNull(record.xsid)) {
    return {Kind::kUnknownHost, entry,
            fmt::format("not filed: its hosting service {} is none of this load point",
                        IdText(record.xsid))};
  }
  return {MfHasSide(record, kMfServiceSide) ? Kind::kUnknownHost : Kind::kNoHost, entry,
          "not filed: no service hosts it"};
}

}  // namespace

std::string ResolvedFile(const MfModuleT& module) {
  const MfModuleImplT* const impl = module.selectedImpl;
  return impl != nullptr && impl->resolvedPath != nullptr ? impl->resolvedPath : "";
}

bool IsFallback(const MfModuleT& module) {
  const std::string machine = btkGetVexMachine();
  return std::any_of(module.impls.begin(), module.impls.end(), [&](const MfModuleImplT* impl) {
    return impl->machinetype != nullptr && impl->machinetype == machine &&
           impl != module.selectedImpl;
  });
}

StepView::StepView(const ScanSession& session, const ScanStep& step) : step_(step) {
  for (const btkHostResolutionT& resolution :
       Part(btkHostEmbeddedDlmManager().Resolutions(), step.registered.resolutions))
    resolutions_.emplace(resolution.id, &resolution);
  if (step.data == nullptr) return;
  for (const MfRunnableT* runnable : step.data->runnables) {
    for (const MfServiceRoleT* role : runnable->services)
      hosts_.insert(role->id);
  }
  answers_.reserve(static_cast<std::size_t>(step.data->classes.count));
  for (const MfIntfClassT* record : step.data->classes)
    answers_.push_back(AnswerFor(*session.Repository(), *record));
}

std::vector<const btkHostResolutionT*> StepView::ResolutionsOf(const MfModuleT& module) const {
  std::vector<const btkHostResolutionT*> resolutions;
  if (module.id == nullptr) return resolutions;
  // Those of one id come in the order in which they were put in.
  const auto [first, last] = resolutions_.equal_range(module.id);
  for (auto at = first; at != last; ++at)
    resolutions.push_back(at->second);
  return resolutions;
}

std::vector<std::string> StepView::TriedFiles(const MfModuleT& module) const {
  std::vector<std::string> tried;
  for (const btkHostResolutionT* resolution : ResolutionsOf(module))
    tried.insert(tried.end(), resolution->tried.begin(), resolution->tried.end());
  return tried;
}

std::vector<std::string> StepView::Refusals(const MfModuleT& module) const {
  std::vector<std::string> reasons;
  for (const btkHostResolutionT* resolution : ResolutionsOf(module)) {
    const bool isKnown =
        std::find(reasons.begin(), reasons.end(), resolution->reason) != reasons.end();
    if (resolution->refusal != kBtkHostAdmitted && !isKnown)
      reasons.emplace_back(resolution->reason);
  }
  return reasons;
}

std::string StepView::WhyUnresolved(const MfModuleT& module) const {
  std::vector<std::string> parts = Refusals(module);
  const std::vector<std::string> tried = TriedFiles(module);
  if (!tried.empty()) parts.push_back(fmt::format("looked for {}", fmt::join(tried, ", ")));
  return parts.empty() ? "nowhere to look" : fmt::to_string(fmt::join(parts, "; "));
}

std::vector<const MfModuleT*> StepView::UnresolvedModules() const {
  std::vector<const MfModuleT*> modules;
  if (step_.data == nullptr) return modules;
  for (const MfModuleT* module : step_.data->modules) {
    if (ResolvedFile(*module).empty()) modules.push_back(module);
  }
  return modules;
}

ClassAnswer StepView::AnswerFor(liMfRepository& repository, const MfIntfClassT& record) const {
  if (record.commonname == nullptr) return {Kind::kNoName, nullptr, "it has no common name"};
  const MfSvcResolveT* const entry = repository.FindClassImpl(
      &step_.scope, record.commonname, record.svcVersion, std::numeric_limits<std::int16_t>::max());
  if (entry != nullptr && entry->record == &record) return {Kind::kItself, entry, ""};
  if (hosts_.count(record.xsid) == 0) return WithoutHost(record, entry);
  if (entry != nullptr) return {Kind::kAnother, entry, ComesFirst(repository, *entry)};
  return {Kind::kNegative, nullptr, "no query asks for a negative service version"};
}

ScanView::ScanView(const ScanSession& session) : session_(session) {
  steps_.reserve(session.Steps().size());
  std::map<UniIdT, StepView*, IdOrder> byLoadpoint;
  for (const ScanStep& step : session.Steps()) {
    StepView& view = steps_.emplace_back(session, step);
    if (step.data != nullptr) byLoadpoint.emplace(step.id, &view);
  }
  if (session.Repository() == nullptr) return;
  services_ = ServiceEntries(*session.Repository());
  for (const MfSvcResolveT& entry : services_) {
    const auto owner = byLoadpoint.find(entry.ids[kMfLoadpointId]);
    if (owner != byLoadpoint.end()) owner->second->services_.push_back(&entry);
  }
}

std::vector<MfSvcResolveT> ServiceEntries(liMfRepository& repository) {
  std::vector<MfSvcResolveT> entries(
      static_cast<std::size_t>(repository.GetServiceEntries(nullptr, 0)));
  repository.GetServiceEntries(entries.data(), static_cast<std::int32_t>(entries.size()));
  return entries;
}

}  // namespace tool
