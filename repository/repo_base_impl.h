// The repository object: six sorted indexes and the questions that they answer.
#ifndef REPOSITORY_REPO_BASE_IMPL_H
#define REPOSITORY_REPO_BASE_IMPL_H

#include <memory>

#include "tarnmf/repository.h"

#include "repository/ldp_entry.h"
#include "support/growable_array.h"

namespace tarnmf {

// All entries of one name.
struct ResolveBucketT {
  const char* key = nullptr;  // held by liMfRepoBaseImpl::names
  // Ascending by versionKey; entries of equal version in the order in which they were filed.
  GrowableArray<MfSvcResolveT*, 2, DeletesElements> byVersion;
};
template <>
inline constexpr bool kMovesAsBytes<ResolveBucketT> = true;

using BucketIndex = GrowableArray<ResolveBucketT, 32, DestroysElements>;
using ServiceEntryIndex = GrowableArray<MfSvcResolveT*, 8>;
using LoadpointIndex = GrowableArray<MfLdpEntryT*, 2>;

class liMfRepoBaseImpl final : public liMfRepository {
 public:
  liMfRepoBaseImpl() = default;
  // Leaves the load-point records alone: queries hand out pointers into them that outlive
  // everything. DiscardRepository is for a repository that nobody has seen yet.
  ~liMfRepoBaseImpl() override = default;

  BtkErrorT AddLoadpoint(const btkWChar* dir) override;
  std::int32_t GetLoadpointIds(UniIdT* ids, std::int32_t capacity) override;
  MfLdpDataT* FindLoadpoint(const UniIdT* id) override;
  MfServiceRoleT* FindService(const UniIdT* svcid, const btkWChar* loadpoint) override;
  MfSvcResolveT* FindClassImpl(const UniIdT* scope, const char* name, std::int16_t reqVersion,
                               std::int16_t limit) override;
  MfSvcResolveT* FindServiceEntry(const UniIdT* id) override;
  std::int32_t GetServiceEntries(MfSvcResolveT* entries, std::int32_t capacity) override;

  // Declared so that what points at something ends before it: entries point at names, and the
  // service entries belong to serviceIndex.
  BucketIndex classIndex;    // by name
  BucketIndex serviceIndex;  // by name
  GrowableArray<char*, 8, FreesStrings>
      names;                         // one copy of every name that entries are filed under
  ServiceEntryIndex serviceEntries;  // by combined id
  LoadpointIndex loadpointsByPath;
  LoadpointIndex loadpointsById;

  MfLdpEntryT* lastFiled = nullptr;  // of all load points, linked by filedBefore
};

// Ends a repository that did not come to be: the object, then every load point that it had filed.
void DiscardRepository(liMfRepoBaseImpl* repo);

struct RepositoryDiscard {
  void operator()(liMfRepoBaseImpl* repo) const { DiscardRepository(repo); }
};
using RepositoryPtr = std::unique_ptr<liMfRepoBaseImpl, RepositoryDiscard>;

// The process's repository; null while no Initialize has succeeded.
extern liMfRepoBaseImpl* g_repository;

}  // namespace tarnmf

#endif  // REPOSITORY_REPO_BASE_IMPL_H
