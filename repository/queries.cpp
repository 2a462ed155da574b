// The questions that the repository answers.
#include "platform/unique_id.h"
#include "repository/indexes.h"

namespace tarnmf {
namespace {

bool Fits(const void* buffer, std::int32_t capacity, std::int32_t count) {
  return buffer != nullptr && capacity >= count;
}

}  // namespace

std::int32_t liMfRepoBaseImpl::GetLoadpointIds(UniIdT* ids, std::int32_t capacity) {
  if (Fits(ids, capacity, loadpointsById.Count())) {
    for (const MfLdpEntryT* entry : loadpointsById)
      *ids++ = entry->id;
  }
  return loadpointsById.Count();
}

MfLdpDataT* liMfRepoBaseImpl::FindLoadpoint(const UniIdT* id) {
  const BisectResult at = FindById(loadpointsById, id != nullptr ? *id : kBtkNullUniId);
  return at.found ? &loadpointsById[at.place]->data : nullptr;
}

MfServiceRoleT* liMfRepoBaseImpl::FindService(const UniIdT* svcid, const btkWChar* loadpoint) {
  if (svcid == nullptr) return nullptr;
  const BisectResult at = FindByPath(loadpointsByPath, loadpoint);
  if (!at.found) return nullptr;
  for (const MfRunnableT* runnable : loadpointsByPath[at.place]->data.runnables) {
    for (MfServiceRoleT* role : runnable->services) {
      if (btkUniIdIsEqual(&role->id, svcid)) return role;
    }
  }
  return nullptr;
}

MfSvcResolveT* liMfRepoBaseImpl::FindClassImpl(const UniIdT* scope, const char* name,
                                               std::int16_t reqVersion, std::int16_t limit) {
  const BisectResult at = FindBucket(classIndex, name);
  if (!at.found) return nullptr;
  const ResolveBucketT& bucket = classIndex[at.place];
  const auto threshold = static_cast<std::int16_t>(VersionKey(reqVersion < 0 ? 0 : reqVersion) - 1);
  const std::int32_t first = FirstAbove(bucket, threshold);
  const UniIdT& wanted = scope != nullptr ? *scope : kBtkNullUniId;
  MfSvcResolveT* withoutScope = nullptr;
  for (std::int32_t i = bucket.byVersion.Count() - 1; i >= first; --i) {
    MfSvcResolveT* const entry = bucket.byVersion[i];
    if (entry->record->svcMinVersion > limit) continue;
    if (btkUniIdIsEqual(&entry->ids[kMfScopeId], &wanted)) return entry;
    if (withoutScope == nullptr && btkUniIdIsNull(entry->ids[kMfScopeId])) withoutScope = entry;
  }
  return withoutScope;
}

MfSvcResolveT* liMfRepoBaseImpl::FindServiceEntry(const UniIdT* id) {
  if (id == nullptr) return nullptr;
  const BisectResult at = FindByCombinedId(serviceEntries, *id);
  return at.found ? serviceEntries[at.place] : nullptr;
}

std::int32_t liMfRepoBaseImpl::GetServiceEntries(MfSvcResolveT* entries, std::int32_t capacity) {
  if (Fits(entries, capacity, serviceEntries.Count())) {
    for (const MfSvcResolveT* entry : serviceEntries)
      *entries++ = *entry;
  }
  return serviceEntries.Count();
}

}  // namespace tarnmf
