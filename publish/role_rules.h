// SPDX-License-Identifier: Apache-2.0
// Which roles the sides of classes give to modules, and which of them exclude each other.
#ifndef PUBLISH_ROLE_RULES_H
#define PUBLISH_ROLE_RULES_H

#include <cstdint>

#include "publish/publish_index.h"
#include "publish/refusal.h"

namespace tarnmf {

// Roles, one bit each.
using RoleSet = std::uint32_t;
constexpr RoleSet RoleBit(ModuleRole role) {
  return RoleSet{1} << role;
}

// What one role asks of a module and gives it.
struct RoleRule {
  MfSideT side;      // of the class that asks for the role
  RoleSet excluded;  // none of these may the module have
  RoleSet added;     // the role itself, and what comes with it
  ModuleListMember list;
};

inline constexpr RoleSet kAppBit = RoleBit(kAppRole);
inline constexpr RoleSet kAgentBit = RoleBit(kAgentRole);
inline constexpr RoleSet kClientBit = RoleBit(kServiceClientRole);
inline constexpr RoleSet kServerBit = RoleBit(kServiceServerRole);
inline constexpr RoleSet kGenericBit = RoleBit(kGenericRole);

// One row per ModuleRole. A class claims its modules in the order of the rows, a module is filed in
// the lists in that order, and the first excluded role is the one that is reported.
inline constexpr RoleRule kRoleRules[] = {
    {kMfClientSide, kAgentBit | kClientBit | kServerBit | kGenericBit, kAppBit,
     &PublishIndexT::appModules},
    {kMfAgentSide, kAppBit | kClientBit | kServerBit | kGenericBit, kAgentBit,
     &PublishIndexT::agentModules},
    {kMfClientSide, kAppBit | kAgentBit | kServerBit, kClientBit | kGenericBit,
     &PublishIndexT::serviceClientModules},
    {kMfServiceSide, kAppBit | kAgentBit | kClientBit, kServerBit | kGenericBit,
     &PublishIndexT::serviceServerModules},
    {kMfClientSide, kAppBit | kAgentBit, kGenericBit, &PublishIndexT::genericModules},
};
static_assert(kRoleRules[kAppRole].list == &PublishIndexT::appModules &&
              kRoleRules[kAgentRole].list == &PublishIndexT::agentModules &&
              kRoleRules[kServiceClientRole].list == &PublishIndexT::serviceClientModules &&
              kRoleRules[kServiceServerRole].list == &PublishIndexT::serviceServerModules &&
              kRoleRules[kGenericRole].list == &PublishIndexT::genericModules);

// What classes of one affinity must have, and the roles that their sides ask for.
struct AffinityRule {
  SideSet neededSides;  // one of these
  RoleSet claimed;
};

constexpr AffinityRule RuleOf(std::int32_t affinity) {
  switch (affinity) {
    case kMfAppClass:
      return {SideBit(kMfClientSide), kAppBit};
    case kMfAgentClass:
      return {SideBit(kMfAgentSide), kAgentBit};
    case kMfGenericClass:
      return {SideBit(kMfClientSide), kAgentBit | kGenericBit};
    default:
      return {SideBit(kMfClientSide) | SideBit(kMfServiceSide),
              kAgentBit | kClientBit | kServerBit};
  }
}

}  // namespace tarnmf

#endif  // PUBLISH_ROLE_RULES_H
