// SPDX-License-Identifier: Apache-2.0
// What a publisher knows of the records that it has accepted, for the checks of the next ones.
#ifndef PUBLISH_PUBLISH_INDEX_H
#define PUBLISH_PUBLISH_INDEX_H

#include <cstdint>
#include <cstring>

#include "tarnmf/intf_class.h"
#include "tarnmf/module.h"
#include "tarnmf/runnable.h"

#include "platform/unique_id.h"
#include "support/bisect.h"
#include "support/growable_array.h"

namespace tarnmf {

using SortedModules = GrowableArray<MfModuleT*, 4>;     // by id
using SortedClasses = GrowableArray<MfIntfClassT*, 8>;  // by class id

// Records that are to be registered by the next Publish, in the order in which they were added.
using NewModules = GrowableArray<MfModuleT*, 2>;
using NewRunnables = GrowableArray<MfRunnableT*, 4>;
using NewClasses = GrowableArray<MfIntfClassT*, 8>;

// One list of all modules, one list per role in which class sides use them, and the classes. No
// list holds two records with the same key. The records belong to the publisher's caller.
struct PublishIndexT {
  SortedModules modules;
  SortedModules appModules;            // client sides of app classes
  SortedModules agentModules;          // agent sides of any class
  SortedModules serviceClientModules;  // client sides of service classes
  SortedModules serviceServerModules;  // service sides of service classes
  SortedModules genericModules;        // client sides of generic classes, both of service classes
  SortedClasses classes;               // every class that was not folded into another

  // Empties all lists and keeps their room.
  void Forget();
};

using ModuleListMember = SortedModules PublishIndexT::*;

inline constexpr ModuleListMember kModuleLists[] = {
    &PublishIndexT::modules,
    &PublishIndexT::appModules,
    &PublishIndexT::agentModules,
    &PublishIndexT::serviceClientModules,
    &PublishIndexT::serviceServerModules,
    &PublishIndexT::genericModules,
};

// Byte by byte, unsigned; null sorts first and equals null.
inline int CompareTexts(const char* left, const char* right) {
  if (left == nullptr || right == nullptr) return (left != nullptr) - (right != nullptr);
  return std::strcmp(left, right);
}

// The orders of the lists.
inline int CompareKeys(const MfModuleT& left, const MfModuleT& right) {
  return CompareTexts(left.id, right.id);
}
inline int CompareKeys(const MfIntfClassT& left, const MfIntfClassT& right) {
  return btkUniIdCompare(&left.ids[kMfClientSide], &right.ids[kMfClientSide]);
}

// ---- Look-ups ----------------------------------------------------------------------------------

inline BisectResult FindModule(const SortedModules& modules, const char* id) {
  return Bisect(modules.Count(), [&](std::int32_t i) { return CompareTexts(modules[i]->id, id); });
}

inline BisectResult FindClass(const SortedClasses& classes, const UniIdT& id) {
  return Bisect(classes.Count(), [&](std::int32_t i) {
    return btkUniIdCompare(&classes[i]->ids[kMfClientSide], &id);
  });
}

// A module's implementation for `machine`, or null. The first one is for no machine in particular
// and is left out.
inline MfModuleImplT* FindImplementation(const MfModuleT& module, const char* machine) {
  for (std::int32_t i = 1; i < module.impls.count; ++i) {
    const char* const type = module.impls[i]->machinetype;
    if (type != nullptr && std::strcmp(type, machine) == 0) return module.impls[i];
  }
  return nullptr;
}

}  // namespace tarnmf

#endif  // PUBLISH_PUBLISH_INDEX_H
