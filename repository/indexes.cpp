// SPDX-License-Identifier: Apache-2.0
// How the repository's indexes are searched and filled, and the questions that they answer.
#include "repository/indexes.h"

#include <new>

#include "platform/memory.h"
#include "platform/runtime.h"
#include "platform/unique_id.h"
#include "support/bisect.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

// ---- Searching ---------------------------------------------------------------------------------

BisectResult FindName(const liMfRepoBaseImpl& repo, const char* name) {
  return Bisect(repo.names.Count(), [&](std::int32_t i) {
    const char* const pooled = repo.names[i];
    return CmpCase_cStrings_Safe(&pooled, &name);
  });
}

BisectResult FindByPath(const LoadpointIndex& index, const btkWChar* path) {
  return Bisect(index.Count(), [&](std::int32_t i) {
    const btkWChar* const filed = index[i]->data.loadpoint;
    return Cmp_cWPaths_Safe(&filed, &path);
  });
}

BisectResult FindById(const LoadpointIndex& index, const UniIdT& id) {
  return Bisect(index.Count(), [&](std::int32_t i) { return btkUniIdCompare(&index[i]->id, &id); });
}

BisectResult FindByCombinedId(const ServiceEntryIndex& index, const UniIdT& id) {
  return Bisect(index.Count(), [&](std::int32_t i) {
    return btkUniIdCompare(&index[i]->ids[kMfCombinedId], &id);
  });
}

// Orders the entries of one name. Versions outside -16384 to 16383 wrap.
std::int16_t VersionKey(std::int32_t version) {
  return static_cast<std::int16_t>(static_cast<std::uint32_t>(version) * 2);
}

// Where the entries of a bucket begin whose versionKey is greater than `key`, which must be odd:
// stored keys are even, so the search never matches.
std::int32_t FirstAbove(const ResolveBucketT& bucket, std::int16_t key) {
  return Bisect(bucket.byVersion.Count(),
                [&](std::int32_t i) { return bucket.byVersion[i]->versionKey - key; })
      .place;
}

// ---- Filing ------------------------------------------------------------------------------------

// The repository's own copy of a name; null when out of memory.
const char* Intern(liMfRepoBaseImpl& repo, const char* name) {
  const BisectResult at = FindName(repo, name);
  if (at.found) return repo.names[at.place];
  Utf8Text copy(btk_strdup(name));
  if (!copy || !repo.names.Insert(at.place, copy.get())) return nullptr;
  return copy.release();
}

// The bucket of a name, made when there is none yet; null when out of memory.
ResolveBucketT* BucketOf(liMfRepoBaseImpl& repo, BucketIndex& index, const char* name) {
  const BisectResult at = index.Find(name);
  if (at.found) return &index[at.place];
  const char* const pooled = Intern(repo, name);
  if (pooled == nullptr || !index.ReserveOne()) return nullptr;
  return &index.EmplaceReserved(at.place, pooled);
}

// Inserts after all entries of the same version, so that entries of equal version keep the order in
// which they were filed.
void InsertByVersion(ResolveBucketT& bucket, MfSvcResolveT* entry) {
  const auto next = static_cast<std::int16_t>(entry->versionKey + 1);
  bucket.byVersion.InsertReserved(FirstAbove(bucket, next), entry);
}

// In an index of unique keys: takes the place of the element with the same key.
template <class Index, class Element>
void InsertOrReplace(Index& index, BisectResult at, Element* element) {
  if (at.found) {
    index[at.place] = element;
  } else {
    index.InsertReserved(at.place, element);
  }
}

bool Fits(const void* buffer, std::int32_t capacity, std::int32_t count) {
  return buffer != nullptr && capacity >= count;
}

}  // namespace

bool FileClassEntry(liMfRepoBaseImpl& repo, const char* name, const UniIdT* ldpId,
                    const UniIdT* scope, MfMultiplicityT multiplicity, MfIntfClassT* cls) {
  ResolveBucketT* const bucket = BucketOf(repo, repo.classIndex, name);
  if (bucket == nullptr || !bucket->byVersion.ReserveMore(1)) return false;
  auto* const entry =
      new (std::nothrow) MfSvcResolveT{.kind = kMfClassEntry,
                                       .key = bucket->key,
                                       .ids = {kBtkNullUniId, kBtkNullUniId, *ldpId, *scope},
                                       .multiplicity = multiplicity,
                                       .versionKey = VersionKey(cls->svcVersion),
                                       .record = cls};
  if (entry == nullptr) return false;
  InsertByVersion(*bucket, entry);
  return true;
}

bool FileServiceEntry(liMfRepoBaseImpl& repo, const char* name, const UniIdT* ldpId,
                      const UniIdT* scope, const UniIdT* svcid, MfMultiplicityT multiplicity,
                      std::int32_t version, MfIntfClassT* cls) {
  ResolveBucketT* const bucket = BucketOf(repo, repo.serviceIndex, name);
  if (bucket == nullptr || !bucket->byVersion.ReserveMore(1)) return false;
  if (!repo.serviceEntries.ReserveMore(1)) return false;
  UniIdT combined{};
  if (btkUniIdCombine(&combined, ldpId, svcid) != kBtkOk) return false;
  const BisectResult byId = FindByCombinedId(repo.serviceEntries, combined);
  auto* const entry = new (std::nothrow) MfSvcResolveT{.kind = kMfServiceEntry,
                                                       .key = bucket->key,
                                                       .ids = {combined, *svcid, *ldpId, *scope},
                                                       .multiplicity = multiplicity,
                                                       .versionKey = VersionKey(version),
                                                       .record = cls};
  if (entry == nullptr) return false;
  InsertByVersion(*bucket, entry);
  InsertOrReplace(repo.serviceEntries, byId, entry);
  return true;
}

bool HasLoadpoint(const liMfRepoBaseImpl& repo, const btkWChar* path) {
  return FindByPath(repo.loadpointsByPath, path).found;
}

bool ReserveLoadpoint(liMfRepoBaseImpl& repo) {
  return repo.loadpointsByPath.ReserveMore(1) && repo.loadpointsById.ReserveMore(1);
}

MfLdpEntryT& FileLoadpoint(liMfRepoBaseImpl& repo, std::unique_ptr<MfLdpEntryT> entry) {
  const BisectResult byPath = FindByPath(repo.loadpointsByPath, entry->data.loadpoint);
  const BisectResult byId = FindById(repo.loadpointsById, entry->id);
  InsertOrReplace(repo.loadpointsByPath, byPath, entry.get());
  InsertOrReplace(repo.loadpointsById, byId, entry.get());
  entry->filedBefore = repo.lastFiled;
  repo.lastFiled = entry.release();
  return *repo.lastFiled;
}

// ---- Queries -----------------------------------------------------------------------------------

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
  const BisectResult at = classIndex.Find(name);
  if (!at.found) return nullptr;
  const ResolveBucketT& bucket = classIndex[at.place];
  const auto threshold = static_cast<std::int16_t>(VersionKey(reqVersion < 0 ? 0 : reqVersion) - 1);
  const UniIdT& wanted = scope != nullptr ? *scope : kBtkNullUniId;
  MfSvcResolveT* withoutScope = nullptr;
  // From the highest version, so that what is too old ends the walk.
  for (std::int32_t i = bucket.byVersion.Count() - 1; i >= 0; --i) {
    MfSvcResolveT* const entry = bucket.byVersion[i];
    if (entry->versionKey < threshold) break;
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
