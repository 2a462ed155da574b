// SPDX-License-Identifier: Apache-2.0
#include "publish/module_roles.h"

#include <bit>
#include <iterator>

namespace tarnmf {

namespace {

ModuleRole RoleOf(const RoleRule& rule) {
  return static_cast<ModuleRole>(&rule - kRoleRules);
}
RoleSet BitOf(const RoleRule& rule) {
  return RoleBit(RoleOf(rule));
}

SideSet SidesOf(const MfIntfClassT& record) {
  SideSet sides = 0;
  for (MfSideT side : {kMfClientSide, kMfServiceSide, kMfAgentSide}) {
    if (MfHasSide(record, side)) sides |= SideBit(side);
  }
  return sides;
}

RoleSet RolesIn(const PublishIndexT& index, const char* id) {
  RoleSet roles = 0;
  for (const RoleRule& rule : kRoleRules) {
    if (FindModule(index.*rule.list, id).found) roles |= BitOf(rule);
  }
  return roles;
}

}  // namespace

bool ModuleRoles::Start() {
  if (!uses_.Reserve(modules_.Count())) return false;
  while (uses_.Count() < modules_.Count())
    uses_.AppendReserved({});
  return true;
}

Refusal ModuleRoles::Claim(const MfIntfClassT& record) {
  const AffinityRule affinity = RuleOf(record.affinity);
  const SideSet sides = SidesOf(record);
  if ((sides & affinity.neededSides) == 0) {
    return {.cause = RefusalCause::kMissingSide,
            .intfClass = &record,
            .neededSides = affinity.neededSides};
  }
  for (const RoleRule& rule : kRoleRules) {
    if ((affinity.claimed & BitOf(rule)) == 0 || (sides & SideBit(rule.side)) == 0) continue;
    if (Refusal refusal = ClaimSide(record, rule)) return refusal;
  }
  return {};
}

Refusal ModuleRoles::ClaimSide(const MfIntfClassT& record, const RoleRule& rule) {
  const char* const id = record.sides[rule.side].moduleref;
  // No module is in both indexes, so that one of them knows all its roles.
  const BisectResult at = modules_.Find(id);
  const Use use = at.found ? uses_[at.place] : Use{RolesIn(merged_, id), nullptr};
  if (const RoleSet excluding = use.roles & rule.excluded) {
    const int other = std::countr_zero(excluding);
    return {.cause = RefusalCause::kExcludedByOtherRole,
            .intfClass = &record,
            .otherClass = use.giver,
            .side = rule.side,
            .otherSide = kRoleRules[other].side,
            .role = RoleOf(rule),
            .otherRole = static_cast<ModuleRole>(other)};
  }
  if ((use.roles & BitOf(rule)) != 0) return {};
  if (!at.found) {
    return {.cause = RefusalCause::kUnknownModule,
            .intfClass = &record,
            .side = rule.side,
            .role = RoleOf(rule)};
  }
  uses_[at.place] = {use.roles | rule.added, &record};
  return {};
}

bool ModuleRoles::FileModules(PublishIndexT& batch) const {
  std::int32_t counts[std::size(kRoleRules)] = {};
  for (const Use& use : uses_) {
    for (RoleSet left = use.roles; left != 0; left &= left - 1)
      ++counts[std::countr_zero(left)];
  }
  for (const RoleRule& rule : kRoleRules) {
    if (!(batch.*rule.list).Reserve(counts[RoleOf(rule)])) return false;
  }
  for (std::int32_t rank = 0; rank < uses_.Count(); ++rank) {
    for (RoleSet left = uses_[rank].roles; left != 0; left &= left - 1)
      (batch.*kRoleRules[std::countr_zero(left)].list).AppendReserved(&modules_[rank]);
  }
  return true;
}

}  // namespace tarnmf
