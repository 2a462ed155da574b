// SPDX-License-Identifier: Apache-2.0
// The repository object: the load points and the six sorted indexes over them.
#ifndef REPOSITORY_REPO_BASE_IMPL_H
#define REPOSITORY_REPO_BASE_IMPL_H

#include <memory>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/publisher.h"
#include "tarnmf/repository.h"

#include "platform/runtime.h"
#include "platform/unique_id.h"
#include "repository/name_index.h"
#include "support/growable_array.h"

namespace tarnmf {

// One load point.
struct MfLdpEntryT {
  explicit MfLdpEntryT(const UniIdT& loadpointId) : id(loadpointId) {}
  // The publisher points into the data, so it goes first.
  ~MfLdpEntryT() { publisher.reset(); }

  DisposePtr<liMfPublisher> publisher;  // null until the manifests have been read
  UniIdT id;
  MfLdpDataT data;  // with the path of the load point, and everything its manifests declare

  // The record filed before this one. The indexes lose sight of a record that another one replaces;
  // this chain does not.
  MfLdpEntryT* filedBefore = nullptr;
};

// All entries of one name.
struct ResolveBucketT {
  const char* key = nullptr;  // held by liMfRepoBaseImpl::names
  // Ascending by versionKey; entries of equal version in the order in which they were filed.
  GrowableArray<MfSvcResolveT*, 2, DeletesElements> byVersion;
};
template <>
inline constexpr bool kMovesAsBytes<ResolveBucketT> = true;

struct PlatformOrder {
  static constexpr bool kIsOfBytes = kBtkCmpCaseIsOfBytes;
  int operator()(const char* left, const char* right) const {
    return CmpCase_cStrings_Safe(&left, &right);
  }
};
using BucketIndex = NameIndex<ResolveBucketT, 32, DestroysElements, PlatformOrder>;
using NamePool = GrowableArray<char*, 8, FreesStrings>;
using ServiceEntryIndex = GrowableArray<MfSvcResolveT*, 8>;
using LoadpointIndex = GrowableArray<MfLdpEntryT*, 2>;

class liMfRepoBaseImpl final : public liMfRepository {
 public:
  liMfRepoBaseImpl() = default;
  // Leaves the load-point records alone: queries hand out pointers into them, which stay valid for
  // the life of the process. DiscardRepository is for a repository that nobody has seen yet.
  ~liMfRepoBaseImpl() override = default;

  BtkErrorT AddLoadpoint(const btkWChar* dir) override;
  std::int32_t GetLoadpointIds(UniIdT* ids, std::int32_t capacity) override;
  MfLdpDataT* FindLoadpoint(const UniIdT* id) override;
  MfServiceRoleT* FindService(const UniIdT* svcid, const btkWChar* loadpoint) override;
  MfSvcResolveT* FindClassImpl(const UniIdT* scope, const char* name, std::int16_t reqVersion,
                               std::int16_t limit) override;
  MfSvcResolveT* FindServiceEntry(const UniIdT* id) override;
  std::int32_t GetServiceEntries(MfSvcResolveT* entries, std::int32_t capacity) override;

  // Destroyed from the last to the first: the arrays that only point at things, the names, then the
  // buckets with the entries that serviceEntries points at.
  BucketIndex classIndex;            // by name
  BucketIndex serviceIndex;          // by name
  NamePool names;                    // one copy of every name that entries are filed under
  ServiceEntryIndex serviceEntries;  // by combined id
  LoadpointIndex loadpointsByPath;
  LoadpointIndex loadpointsById;

  MfLdpEntryT* lastFiled = nullptr;  // of all load points, linked by filedBefore
};

// Destroys a repository that has not become the process's: the object, then every load point that
// it had filed.
void DiscardRepository(liMfRepoBaseImpl* repo);

struct RepositoryDiscard {
  void operator()(liMfRepoBaseImpl* repo) const { DiscardRepository(repo); }
};
using RepositoryPtr = std::unique_ptr<liMfRepoBaseImpl, RepositoryDiscard>;

// The process's repository; null while no Initialize has succeeded.
extern liMfRepoBaseImpl* g_repository;

}  // namespace tarnmf

#endif  // REPOSITORY_REPO_BASE_IMPL_H
