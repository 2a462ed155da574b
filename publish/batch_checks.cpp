// SPDX-License-Identifier: Apache-2.0
#include "publish/batch_checks.h"

#include <algorithm>
#include <cassert>

#include "platform/runtime.h"
#include "publish/ascending_search.h"
#include "publish/fetch_ahead.h"
#include "publish/key_order.h"
#include "publish/module_roles.h"

namespace tarnmf {
namespace {

// ---- Keys --------------------------------------------------------------------------------------

// A record whose key is that of an earlier one, of this batch or before it.
template <class Record>
struct Repeat {
  std::int32_t position;  // in the batch
  Record* earlier;        // the first record with the key
};
template <class Record>
using Repeats = GrowableArray<Repeat<Record>, 8>;

// Files the records with new keys in `batch` and tells of the others in the order of the batch.
// False: out of memory.
template <class Order, class List, class Record>
bool FileByKey(const Order& order, const List& merged, List& batch, Repeats<Record>& repeats) {
  if (!batch.Reserve(order.Count())) return false;
  AscendingSearch search(merged, order.Count());
  Record* first = nullptr;  // with the key at hand
  for (std::int32_t i = 0; i < order.Count(); ++i) {
    if (i == 0 || !order.HaveEqualKeys(i - 1, i)) {
      const BisectResult at = search.Find(order[i]);
      first = at.found ? merged[at.place] : &order[i];
      if (!at.found) {
        batch.AppendReserved(first);
        continue;
      }
    }
    if (!repeats.Append({order.PositionOf(i), first})) return false;
  }
  std::sort(repeats.begin(), repeats.end(),
            [](const auto& left, const auto& right) { return left.position < right.position; });
  return true;
}

// ---- Modules -----------------------------------------------------------------------------------

Refusal SameMachineType(const MfModuleT& module, const char* type) {
  return {.cause = RefusalCause::kSameMachineType, .module = &module, .machineType = type};
}

using MachineTypes = GrowableArray<const char*, 2>;

// No two of the implementations after the first may be for the same machine type. `machines` is
// room to sort in.
Refusal CheckImplementations(const MfModuleT& module, MachineTypes& machines) {
  if (module.impls.count <= 0) {
    return {.cause = RefusalCause::kNoImplementation, .module = &module};
  }
  if (!machines.Reserve(module.impls.count)) return {.cause = RefusalCause::kOutOfMemory};
  machines.Forget();
  for (std::int32_t i = 1; i < module.impls.count; ++i) {
    const char* const type = module.impls[i]->machinetype;
    const BisectResult at =
        Bisect(machines.Count(), [&](std::int32_t k) { return CompareTexts(machines[k], type); });
    if (at.found) return SameMachineType(module, type);
    machines.InsertReserved(at.place, type);
  }
  return {};
}

void FetchImplementations(const MfModuleT& module) {
  Prefetch(module.impls.items);
}

// The platform is asked for its machine type only where there is a module to choose for.
Refusal CheckModules(const MfListT<MfModuleT>& modules, ModuleOrder& order, PublishIndexT& batch,
                     const PublishIndexT& merged) {
  if (modules.count == 0) return {};
  const char* const machine = btkGetVexMachine();
  Repeats<MfModuleT> repeats;
  if (!order.Build(modules) || !FileByKey(order, merged.modules, batch.modules, repeats)) {
    return {.cause = RefusalCause::kOutOfMemory};
  }
  MachineTypes machines;
  const std::int32_t unique = repeats.Empty() ? modules.count : repeats[0].position;
  for (std::int32_t i = 0; i < unique; ++i) {
    FetchAhead(modules, modules.count, i, FetchImplementations);
    MfModuleT& module = *modules[i];
    if (Refusal refusal = CheckImplementations(module, machines)) return refusal;
    MfModuleImplT* const native = FindImplementation(module, machine);
    module.selectedImpl = native != nullptr ? native : module.impls[0];
  }
  if (repeats.Empty()) return {};
  return {.cause = RefusalCause::kSameModuleId,
          .module = modules[unique],
          .otherModule = repeats[0].earlier};
}

// ---- Classes -----------------------------------------------------------------------------------

// One record brings the client side, the other one the service side; the agent side may come with
// either of them.
bool Completes(const MfIntfClassT& record, const MfIntfClassT& earlier) {
  const bool hasClient = MfHasSide(earlier, kMfClientSide);
  const bool hasService = MfHasSide(earlier, kMfServiceSide);
  return hasClient != hasService && MfHasSide(record, kMfClientSide) == hasService &&
         MfHasSide(record, kMfServiceSide) == hasClient &&
         !(MfHasSide(earlier, kMfAgentSide) && MfHasSide(record, kMfAgentSide));
}

// REQUIRES: the record completes `earlier`, so that they have no side in common.
void MoveSides(MfIntfClassT& record, MfIntfClassT& earlier) {
  assert(Completes(record, earlier));
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    if (record.sides[side].moduleref == nullptr) continue;
    earlier.ids[side] = record.ids[side];
    earlier.sides[side] = record.sides[side];
    record.sides[side].moduleref = nullptr;
  }
}

// `earlier` is the record of the same class, or null.
Refusal CheckClass(MfIntfClassT& record, MfIntfClassT* earlier, ModuleRoles& roles) {
  if (earlier != nullptr && !Completes(record, *earlier)) {
    return {.cause = RefusalCause::kSameClassId, .intfClass = &record, .otherClass = earlier};
  }
  if (Refusal refusal = roles.Claim(record)) return refusal;
  if (earlier != nullptr) MoveSides(record, *earlier);
  return {};
}

Refusal CheckClasses(const MfListT<MfIntfClassT>& classes, const ModuleOrder& modules,
                     PublishIndexT& batch, const PublishIndexT& merged) {
  if (classes.count == 0) return {};
  ClassOrder order;
  Repeats<MfIntfClassT> repeats;
  ModuleRoles roles(modules, merged);
  if (!order.Build(classes) || !FileByKey(order, merged.classes, batch.classes, repeats) ||
      !roles.Start()) {
    return {.cause = RefusalCause::kOutOfMemory};
  }
  const Repeat<MfIntfClassT>* repeat = repeats.begin();
  for (std::int32_t i = 0; i < classes.count; ++i) {
    const bool repeated = repeat != repeats.end() && repeat->position == i;
    MfIntfClassT* const earlier = repeated ? repeat++->earlier : nullptr;
    FetchAhead(classes, classes.count, i, FetchModuleIds);
    if (Refusal refusal = CheckClass(*classes[i], earlier, roles)) return refusal;
  }
  return roles.FileModules(batch) ? Refusal{} : Refusal{.cause = RefusalCause::kOutOfMemory};
}

}  // namespace

Refusal CheckBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes,
                   PublishIndexT& batch, const PublishIndexT& merged) {
  ModuleOrder order;
  if (Refusal refusal = CheckModules(modules, order, batch, merged)) return refusal;
  return CheckClasses(classes, order, batch, merged);
}

Refusal CheckFirstBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes) {
  PublishIndexT batch;
  return CheckBatch(modules, classes, batch, PublishIndexT());
}

}  // namespace tarnmf
