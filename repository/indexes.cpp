#include "repository/indexes.h"

#include <new>

#include "platform/memory.h"
#include "platform/runtime.h"
#include "platform/unique_id.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

BisectResult FindName(const liMfRepoBaseImpl& repo, const char* name) {
  return Bisect(repo.names.Count(), [&](std::int32_t i) {
    const char* const pooled = repo.names[i];
    return CmpCase_cStrings_Safe(&pooled, &name);
  });
}

// The repository's own copy of a name, or null.
const char* Intern(liMfRepoBaseImpl& repo, const char* name) {
  const BisectResult at = FindName(repo, name);
  if (at.found) return repo.names[at.place];
  Utf8Text copy(btk_strdup(name));
  if (!copy || !repo.names.Insert(at.place, copy.get())) return nullptr;
  return copy.release();
}

// The bucket of a name, made when there is none yet; null when memory could not be had.
ResolveBucketT* BucketOf(liMfRepoBaseImpl& repo, BucketIndex& index, const char* name) {
  const char* const pooled = Intern(repo, name);
  if (pooled == nullptr) return nullptr;
  const BisectResult at = FindBucket(index, pooled);
  if (at.found) return &index[at.place];
  if (!index.ReserveMore(1)) return nullptr;
  ResolveBucketT& bucket = index.EmplaceReserved(at.place);
  bucket.key = pooled;
  return &bucket;
}

// Inserts behind all entries of the same version, so that entries of equal version keep the order
// in which they were filed.
void InsertByVersion(ResolveBucketT& bucket, MfSvcResolveT* entry) {
  const auto behind = static_cast<std::int16_t>(entry->versionKey + 1);
  bucket.byVersion.InsertReserved(FirstAbove(bucket, behind), entry);
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

}  // namespace

BisectResult FindBucket(const BucketIndex& index, const char* name) {
  return Bisect(index.Count(),
                [&](std::int32_t i) { return CmpCase_cStrings_Safe(&index[i].key, &name); });
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

std::int32_t FirstAbove(const ResolveBucketT& bucket, std::int16_t key) {
  return Bisect(bucket.byVersion.Count(),
                [&](std::int32_t i) { return bucket.byVersion[i]->versionKey - key; })
      .place;
}

std::int16_t VersionKey(std::int32_t version) {
  return static_cast<std::int16_t>(static_cast<std::uint32_t>(version) * 2);
}

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
  auto* const entry = new (std::nothrow) MfSvcResolveT{.kind = kMfServiceEntry,
                                                       .key = bucket->key,
                                                       .ids = {combined, *svcid, *ldpId, *scope},
                                                       .multiplicity = multiplicity,
                                                       .versionKey = VersionKey(version),
                                                       .record = cls};
  if (entry == nullptr) return false;
  InsertByVersion(*bucket, entry);
  InsertOrReplace(repo.serviceEntries, FindByCombinedId(repo.serviceEntries, combined), entry);
  return true;
}

bool ReserveLoadpoint(liMfRepoBaseImpl& repo) {
  return repo.loadpointsByPath.ReserveMore(1) && repo.loadpointsById.ReserveMore(1);
}

void FileLoadpoint(liMfRepoBaseImpl& repo, MfLdpEntryT* entry) {
  InsertOrReplace(repo.loadpointsByPath, FindByPath(repo.loadpointsByPath, entry->data.loadpoint),
                  entry);
  InsertOrReplace(repo.loadpointsById, FindById(repo.loadpointsById, entry->id), entry);
  entry->filedBefore = repo.lastFiled;
  repo.lastFiled = entry;
}

}  // namespace tarnmf
