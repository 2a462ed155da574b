// SPDX-License-Identifier: Apache-2.0
// The pass that files a load point's classes and exposed services.
#include <algorithm>

#include "platform/service.h"
#include "platform/unique_id.h"
#include "repository/indexes.h"
#include "repository/scan.h"
#include "support/bisect.h"
#include "support/growable_array.h"

namespace tarnmf {
namespace {

// The service that hosts classes which name none.
constexpr char kDefaultHost[] = "GenLWSC";

// The version that is asked for is the negated 16-bit value.
std::int16_t RequestedVersion(std::int32_t xsversion) {
  return static_cast<std::int16_t>(0U - static_cast<std::uint32_t>(xsversion));
}

// Puts questions about one load point to the service manager; each may be refused.
class ServiceQuestions {
 public:
  explicit ServiceQuestions(const btkWChar* loadpoint)
      : manager_(btkServiceManager::Instance()), loadpoint_(loadpoint) {}

  bool Resolve(UniIdT& id, const char* name, std::int16_t version) const {
    return manager_ != nullptr &&
           manager_->ResolveExternalService(&id, name, version, 0, loadpoint_) == kBtkOk;
  }
  bool Versions(std::int16_t& version, std::int16_t& minVersion, const UniIdT& id) const {
    return manager_ != nullptr &&
           manager_->QueryServiceVersions(&version, &minVersion, &id, loadpoint_) == kBtkOk;
  }

 private:
  btkServiceManager* manager_;
  const btkWChar* loadpoint_;
};

// The service roles of a load point by id, which are collected when a class first asks for its host.
class HostTable {
 public:
  enum class Found { kHost, kNone, kNoMemory };

  explicit HostTable(const MfLdpDataT& data) : data_(data) {}

  // Stores how many instances the hosting service has: what the first role with its id says.
  Found Find(const UniIdT& id, MfMultiplicityT& multiplicity) {
    if (!collected_ && !Collect()) return Found::kNoMemory;
    const std::int32_t first = Bisect(hosts_.Count(), [&](std::int32_t i) {
                                 return btkUniIdCompare(&hosts_[i].id, &id) < 0 ? -1 : 1;
                               }).place;
    if (first == hosts_.Count() || !btkUniIdIsEqual(&hosts_[first].id, &id)) return Found::kNone;
    multiplicity = hosts_[first].multiplicity;
    return Found::kHost;
  }

 private:
  struct Host {
    UniIdT id;
    MfMultiplicityT multiplicity;
    std::int32_t order;  // among all roles
  };

  bool Collect() {
    std::int64_t count = 0;
    for (const MfRunnableT* runnable : data_.runnables)
      count += runnable->services.count;
    if (!hosts_.Reserve(count)) return false;
    for (const MfRunnableT* runnable : data_.runnables) {
      for (const MfServiceRoleT* role : runnable->services)
        hosts_.AppendReserved({role->id, role->multiplicity, hosts_.Count()});
    }
    std::sort(hosts_.begin(), hosts_.end(), [](const Host& left, const Host& right) {
      const int order = btkUniIdCompare(&left.id, &right.id);
      return order != 0 ? order < 0 : left.order < right.order;
    });
    collected_ = true;
    return true;
  }

  const MfLdpDataT& data_;
  GrowableArray<Host, 32> hosts_;
  bool collected_ = false;
};

class IndexingPass {
 public:
  IndexingPass(liMfRepoBaseImpl& repo, MfLdpEntryT& ldp, const UniIdT& scope)
      : repo_(repo), ldp_(ldp), scope_(scope), ask_(ldp.data.loadpoint), hosts_(ldp.data) {}

  bool Run() {
    for (MfIntfClassT* cls : ldp_.data.classes) {
      if (!IndexClass(*cls)) return false;
    }
    for (const MfRunnableT* runnable : ldp_.data.runnables) {
      for (const MfServiceRoleT* role : runnable->services) {
        if (!IndexRole(*role)) return false;
      }
    }
    return true;
  }

 private:
  // Both return false only when out of memory.
  bool IndexClass(MfIntfClassT& cls);
  bool IndexRole(const MfServiceRoleT& role);

  bool FindHostId(MfIntfClassT& cls) const;

  liMfRepoBaseImpl& repo_;
  MfLdpEntryT& ldp_;
  const UniIdT& scope_;
  const ServiceQuestions ask_;
  HostTable hosts_;
};

// Leaves the id of the hosting service in the class; false when there is none.
bool IndexingPass::FindHostId(MfIntfClassT& cls) const {
  if (cls.xsname != nullptr)
    return ask_.Resolve(cls.xsid, cls.xsname, RequestedVersion(cls.xsversion));
  if (!btkUniIdIsNull(cls.xsid)) return true;
  return MfHasSide(cls, kMfServiceSide) && ask_.Resolve(cls.xsid, kDefaultHost, 0);
}

bool IndexingPass::IndexClass(MfIntfClassT& cls) {
  if (cls.commonname == nullptr || !FindHostId(cls)) return true;
  const UniIdT& serviceId = cls.ids[kMfServiceSide];
  const bool offersService = !btkUniIdIsNull(serviceId);
  if (offersService && !ask_.Versions(cls.svcVersion, cls.svcMinVersion, cls.xsid)) return true;

  MfMultiplicityT multiplicity = kMfAlwaysNew;
  const HostTable::Found host = hosts_.Find(cls.xsid, multiplicity);
  if (host != HostTable::Found::kHost) return host == HostTable::Found::kNone;
  if (offersService) multiplicity = cls.sides[kMfServiceSide].multiplicity;

  if (!FileClassEntry(repo_, cls.commonname, &ldp_.id, &scope_, multiplicity, &cls)) return false;
  if (!offersService || !cls.exposed) return true;
  return FileServiceEntry(repo_, cls.commonname, &ldp_.id, &scope_, &serviceId, multiplicity,
                          cls.svcVersion, &cls);
}

bool IndexingPass::IndexRole(const MfServiceRoleT& role) {
  if (!role.exposed) return true;
  std::int16_t version = 0;
  std::int16_t minVersion = 0;
  if (!ask_.Versions(version, minVersion, role.id)) return true;
  // A service without a name is still found by its id.
  const char* const name = role.commonname != nullptr ? role.commonname : "";
  return FileServiceEntry(repo_, name, &ldp_.id, &scope_, &role.id, role.multiplicity, version,
                          nullptr);
}

}  // namespace

bool IndexLoadpoint(liMfRepoBaseImpl& repo, MfLdpEntryT& ldp, const UniIdT& scope) {
  return IndexingPass(repo, ldp, scope).Run();
}

}  // namespace tarnmf
