#include "tools/tarnmf/scan_view.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>

#include "platform/runtime.h"
#include "tools/tarnmf/text.h"

namespace tool {
std::string ResolvedFile(const MfModuleT& module) {
  const MfModuleImplT* const impl = module.selectedImpl;
  return impl != nullptr && impl->resolvedPath != nullptr ? impl->resolvedPath : "";
}

std::vector<std::string> TriedFiles(const ScanStep& step, const MfModuleT& module) {
  std::vector<std::string> tried;
  const auto& resolutions = btkHostEmbeddedDlmManager().Resolutions();
  for (const btkHostResolutionT& resolution : Part(resolutions, step.registered.resolutions)) {
    if (module.id == nullptr || resolution.id != module.id) continue;
    tried.insert(tried.end(), resolution.tried.begin(), resolution.tried.end());
  }
  return tried;
}

bool IsFallback(const MfModuleT& module) {
  const std::string machine = btkGetVexMachine();
  return std::any_of(module.impls.begin(), module.impls.end(), [&](const MfModuleImplT* impl) {
    return impl->machinetype != nullptr && impl->machinetype == machine &&
           impl != module.selectedImpl;
  });
}

std::string WhyUnanswered(liMfRepository& repository, const ScanStep& step,
                          const MfIntfClassT& record) {
  if (record.commonname == nullptr) return "it has no common name";
  const MfSvcResolveT* const entry = repository.FindClassImpl(
      &step.scope, record.commonname, record.svcVersion, std::numeric_limits<std::int16_t>::max());
  if (entry != nullptr && entry->record == &record) return "";
  if (repository.FindService(&record.xsid, step.data->loadpoint) != nullptr) {
    return entry != nullptr ? "another entry comes first"
                            : "no query asks for a negative service version";
  }
  if (!btkUniIdIsNull(record.xsid)) {
    return fmt::format("not filed: its hosting service {} is none of this load point",
                       IdText(record.xsid));
  }
  if (record.xsname != nullptr)
    return fmt::format("not filed: its hosting service \"{}\" is not known", record.xsname);
  return "not filed: no service hosts it";
}

std::vector<MfSvcResolveT> ServiceEntries(liMfRepository& repository) {
  std::vector<MfSvcResolveT> entries(
      static_cast<std::size_t>(repository.GetServiceEntries(nullptr, 0)));
  repository.GetServiceEntries(entries.data(), static_cast<std::int32_t>(entries.size()));
  return entries;
}

std::vector<MfSvcResolveT> ServiceEntries(liMfRepository& repository, const UniIdT& loadpoint) {
  std::vector<MfSvcResolveT> entries = ServiceEntries(repository);
  const auto foreign = std::remove_if(entries.begin(), entries.end(), [&](const auto& entry) {
    return !IsEqual(entry.ids[kMfLoadpointId], loadpoint);
  });
  entries.erase(foreign, entries.end());
  return entries;
}

}  // namespace tool
