// SPDX-License-Identifier: Apache-2.0
// The repository's indexes: what files entries in them.
//
// Every index is a sorted array. A filing operation makes room in every array that will hold the
// new entry, and finds its places, before it makes the entry, so that once there is an entry nothing
// can fail, comparisons of the platform included. What was filed before a failure stays.
#ifndef REPOSITORY_INDEXES_H
#define REPOSITORY_INDEXES_H

#include "repository/repo_base_impl.h"

namespace tarnmf {

// Files an entry for the class under `name`; false when out of memory.
bool FileClassEntry(liMfRepoBaseImpl& repo, const char* name, const UniIdT* ldpId,
                    const UniIdT* scope, MfMultiplicityT multiplicity, MfIntfClassT* cls);

// Files an entry for the service `svcid` under `name` and under its combined id, where it takes the
// place of an earlier one. `cls` is null for a service role. False when out of memory or when the
// ids do not combine.
bool FileServiceEntry(liMfRepoBaseImpl& repo, const char* name, const UniIdT* ldpId,
                      const UniIdT* scope, const UniIdT* svcid, MfMultiplicityT multiplicity,
                      std::int32_t version, MfIntfClassT* cls);

// Whether a load point with this path is filed.
bool HasLoadpoint(const liMfRepoBaseImpl& repo, const btkWChar* path);

// Makes room in both load-point indexes for one more record; false when out of memory.
bool ReserveLoadpoint(liMfRepoBaseImpl& repo);

// Files a load point under its path and its id. In each index it takes the place of a record with
// the same key. From here on the record belongs to the repository.
// REQUIRES: room was made before.
MfLdpEntryT& FileLoadpoint(liMfRepoBaseImpl& repo, std::unique_ptr<MfLdpEntryT> entry);

}  // namespace tarnmf

#endif  // REPOSITORY_INDEXES_H
