// The roles in which the classes of a batch use modules.
#ifndef PUBLISH_MODULE_ROLES_H
#define PUBLISH_MODULE_ROLES_H

#include "publish/publish_index.h"
#include "publish/refusal.h"

namespace tarnmf {

// Roles, one bit each.
using RoleSet = std::uint32_t;

// What one role asks of a module and gives it.
struct RoleRule;

// Gives modules of a batch their roles and files them in the batch's role lists. Modules of earlier
// batches serve further classes in the roles that they have and get no new ones.
class ModuleRoles {
 public:
  // Both have to outlive this object.
  ModuleRoles(PublishIndexT& batch, const PublishIndexT& merged) : batch_(batch), merged_(merged) {}

  // Starts with modules that have no role. Only then can roles be claimed; the batch's modules stay
  // as they are from here on. False: out of memory.
  [[nodiscard]] bool Start();

  // Claims the modules of all sides of a class. The class may be refused after some of them.
  Refusal Claim(const MfIntfClassT& record);

  // Puts the role lists, which grew with the claims, into the order of ids.
  void SortLists();

 private:
  struct Use {
    RoleSet roles = 0;
    const MfIntfClassT* giver = nullptr;  // the class that asked for the last of the roles
  };

  Refusal ClaimSide(const MfIntfClassT& record, const RoleRule& rule);
  Refusal GiveRole(std::int32_t module, const MfIntfClassT& record, const RoleRule& rule);

  PublishIndexT& batch_;
  const PublishIndexT& merged_;
  GrowableArray<Use, 8> uses_;  // of the batch's modules, in their order
};

}  // namespace tarnmf

#endif  // PUBLISH_MODULE_ROLES_H
