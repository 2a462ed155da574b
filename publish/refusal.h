// SPDX-License-Identifier: Apache-2.0
// Why a batch of records is refused.
#ifndef PUBLISH_REFUSAL_H
#define PUBLISH_REFUSAL_H

#include <cstdint>

#include "tarnmf/intf_class.h"
#include "tarnmf/module.h"

namespace tarnmf {

// What a class side makes of the module that it names.
enum ModuleRole : std::uint8_t {
  kAppRole,            // client side of an app class
  kAgentRole,          // agent side of any class
  kServiceClientRole,  // client side of a service class
  kServiceServerRole,  // service side of a service class
  kGenericRole,        // client side of a generic class; comes with both service roles, too
};

// Sides of a class, one bit each.
using SideSet = std::uint32_t;
constexpr SideSet SideBit(MfSideT side) {
  return SideSet{1} << side;
}

enum class RefusalCause : std::uint8_t {
  kNone,                // nothing is refused
  kOutOfMemory,         // no record is to blame, and none is named
  kSameModuleId,        // otherModule has the module's id
  kNoImplementation,    // the module has none
  kSameMachineType,     // two of the module's implementations are for machineType
  kSameClassId,         // otherClass has the class's id, and the two do not complete each other
  kMissingSide,         // the class needs one of neededSides
  kUnknownModule,       // the module that the class's side names is not in the batch; nor has it
                        // got the role with an earlier one
  kExcludedByOtherRole  // the class's side asks for role, but its module has otherRole
};

// The first refused record of a batch, a module or a class, and what is wrong with it. Fields that
// the cause has no use for keep their defaults.
struct [[nodiscard]] Refusal {
  RefusalCause cause = RefusalCause::kNone;
  const MfModuleT* module = nullptr;
  const MfIntfClassT* intfClass = nullptr;

  const MfModuleT* otherModule = nullptr;
  const char* machineType = nullptr;
  // With kExcludedByOtherRole the class whose otherSide gave otherRole, which may be the refused one
  // itself; null when that happened in an earlier batch.
  const MfIntfClassT* otherClass = nullptr;
  SideSet neededSides = 0;
  MfSideT side = kMfClientSide;
  MfSideT otherSide = kMfClientSide;
  ModuleRole role = kAppRole;
  ModuleRole otherRole = kAppRole;

  explicit operator bool() const { return cause != RefusalCause::kNone; }
};

}  // namespace tarnmf

#endif  // PUBLISH_REFUSAL_H
