// SPDX-License-Identifier: Apache-2.0
// The roles in which the classes of a batch use modules.
#ifndef PUBLISH_MODULE_ROLES_H
#define PUBLISH_MODULE_ROLES_H

#include "publish/key_order.h"
#include "publish/publish_index.h"
#include "publish/refusal.h"
#include "publish/role_rules.h"

namespace tarnmf {

// Gives modules of a batch their roles. Modules of earlier batches serve further classes in the roles
// that they have and get no new ones.
class ModuleRoles {
 public:
  // Both have to outlive this object.
  // REQUIRES: no two of `modules`, those of the batch, have the same id.
  ModuleRoles(const ModuleOrder& modules, const PublishIndexT& merged)
      : modules_(modules), merged_(merged) {}

  // Starts with modules that have no role. Only then can roles be claimed. False: out of memory.
  [[nodiscard]] bool Start();

  // Claims the modules of all sides of a class. The class may be refused after some of them.
  Refusal Claim(const MfIntfClassT& record);

  // Files the modules in the role lists of `batch`, which are empty. False: out of memory.
  [[nodiscard]] bool FileModules(PublishIndexT& batch) const;

 private:
  struct Use {
    RoleSet roles = 0;
    const MfIntfClassT* giver = nullptr;  // the class that asked for the last of the roles
  };

  Refusal ClaimSide(const MfIntfClassT& record, const RoleRule& rule);

  const ModuleOrder& modules_;
  const PublishIndexT& merged_;
  GrowableArray<Use, 8> uses_;  // by the modules' ranks
};

}  // namespace tarnmf

#endif  // PUBLISH_MODULE_ROLES_H
