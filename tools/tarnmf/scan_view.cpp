#include "scan_view.h"

#include <algorithm>
#include <limits>

namespace tool {

std::string ResolvedFile(const MfModuleT& module) {
  const MfModuleImplT* const impl = module.selectedImpl;
  return impl != nullptr && impl->resolvedPath != nullptr ? impl->resolvedPath : "";
}

std::vector<std::string> TriedFiles(const ScanStepT& step, const MfModuleT& module) {
  std::vector<std::string> tried;
  const auto& resolutions = btkHostEmbeddedDlmManager().Resolutions();
  for (const btkHostResolutionT& resolution : Part(resolutions, step.registered.resolutions)) {
    if (module.id == nullptr || resolution.id != module.id) continue;
    tried.insert(tried.end(), resolution.tried.begin(), resolution.tried.end());
  }
  return tried;
}

bool AnswersFor(liMfRepository& repository, const ScanStepT& step, const MfIntfClassT& record) {
  const MfSvcResolveT* const entry = repository.FindClassImpl(
      &step.scope, record.commonname, record.svcVersion, std::numeric_limits<std::int16_t>::max());
  return entry != nullptr && entry->record == &record;
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
