// How the repository's indexes are searched and what files entries in them.
//
// Every index is a sorted array. A filing operation makes room in every array that will hold the
// new entry before it makes the entry, so that once there is an entry nothing can fail. What was
// filed before a failure stays.
#ifndef REPOSITORY_INDEXES_H
#define REPOSITORY_INDEXES_H

#include "repository/repo_base_impl.h"
#include "support/bisect.h"

namespace tarnmf {

// Where a key stands in an index, or would be inserted.
BisectResult FindBucket(const BucketIndex& index, const char* name);
BisectResult FindByPath(const LoadpointIndex& index, const btkWChar* path);
BisectResult FindById(const LoadpointIndex& index, const UniIdT& id);
BisectResult FindByCombinedId(const ServiceEntryIndex& index, const UniIdT& id);

// Where the entries of a bucket begin whose versionKey is greater than `key`, which must be odd:
// stored keys are even.
std::int32_t FirstAbove(const ResolveBucketT& bucket, std::int16_t key);

// The key that orders entries of one name. Versions outside -16384 to 16383 wrap.
std::int16_t VersionKey(std::int32_t version);

// Files an entry for the class under `name`; false when memory could not be had.
bool FileClassEntry(liMfRepoBaseImpl& repo, const char* name, const UniIdT* ldpId,
                    const UniIdT* scope, MfMultiplicityT multiplicity, MfIntfClassT* cls);

// Files an entry for the service `svcid` under `name` and under its combined id, where it takes the
// place of an earlier one. `cls` is null for a service role. False when memory could not be had or
// the ids do not combine.
bool FileServiceEntry(liMfRepoBaseImpl& repo, const char* name, const UniIdT* ldpId,
                      const UniIdT* scope, const UniIdT* svcid, MfMultiplicityT multiplicity,
                      std::int32_t version, MfIntfClassT* cls);

// Makes room in both load-point indexes for one more record.
bool ReserveLoadpoint(liMfRepoBaseImpl& repo);

// Files a load point under its path and its id, in room that was made before. In each index it
// takes the place of a record with the same key. From here on the record belongs to the repository.
void FileLoadpoint(liMfRepoBaseImpl& repo, MfLdpEntryT* entry);

}  // namespace tarnmf

#endif  // REPOSITORY_INDEXES_H
