#include "publish/batch_checks.h"

#include <cassert>

#include "platform/runtime.h"
#include "publish/module_roles.h"

namespace tarnmf {
namespace {

// ---- Modules -----------------------------------------------------------------------------------

// No two of the implementations after the first may be for the same machine type.
Refusal CheckImplementations(const MfModuleT& module) {
  if (module.impls.count <= 0) {
    return {.cause = RefusalCause::kNoImplementation, .module = &module};
  }
  GrowableArray<const char*, 2> machines;
  for (std::int32_t i = 1; i < module.impls.count; ++i) {
    const char* const type = module.impls[i]->machinetype;
    const BisectResult at =
        Bisect(machines.Count(), [&](std::int32_t k) { return CompareTexts(machines[k], type); });
    if (at.found) {
      return {.cause = RefusalCause::kSameMachineType, .module = &module, .machineType = type};
    }
    if (!machines.Insert(at.place, type)) return {.cause = RefusalCause::kOutOfMemory};
  }
  return {};
}

Refusal CheckModule(MfModuleT& module, const char* machine, PublishIndexT& batch,
                    const PublishIndexT& merged) {
  const BisectResult at = FindModule(batch.modules, module.id);
  const BisectResult earlier = FindModule(merged.modules, module.id);
  if (at.found || earlier.found) {
    return {.cause = RefusalCause::kSameModuleId,
            .module = &module,
            .otherModule = at.found ? batch.modules[at.place] : merged.modules[earlier.place]};
  }
  if (Refusal refusal = CheckImplementations(module)) return refusal;
  MfModuleImplT* const native = FindImplementation(module, machine);
  module.selectedImpl = native != nullptr ? native : module.impls[0];
  if (!batch.modules.Insert(at.place, &module)) return {.cause = RefusalCause::kOutOfMemory};
  return {};
}

// The platform is asked for its machine type only where there is a module to choose for.
Refusal CheckModules(const MfListT<MfModuleT>& modules, PublishIndexT& batch,
                     const PublishIndexT& merged) {
  if (modules.count == 0) return {};
  const char* const machine = btkGetVexMachine();
  for (MfModuleT* module : modules) {
    if (Refusal refusal = CheckModule(*module, machine, batch, merged)) return refusal;
  }
  return {};
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

MfIntfClassT* FindEarlier(const UniIdT& id, const BisectResult& inBatch, const PublishIndexT& batch,
                          const PublishIndexT& merged) {
  if (inBatch.found) return batch.classes[inBatch.place];
  const BisectResult at = FindClass(merged.classes, id);
  return at.found ? merged.classes[at.place] : nullptr;
}

Refusal CheckClass(MfIntfClassT& record, ModuleRoles& roles, PublishIndexT& batch,
                   const PublishIndexT& merged) {
  const UniIdT& id = record.ids[kMfClientSide];
  const BisectResult at = FindClass(batch.classes, id);
  MfIntfClassT* const earlier = FindEarlier(id, at, batch, merged);
  if (earlier != nullptr && !Completes(record, *earlier)) {
    return {.cause = RefusalCause::kSameClassId, .intfClass = &record, .otherClass = earlier};
  }
  if (Refusal refusal = roles.Claim(record)) return refusal;
  if (earlier != nullptr) {
    MoveSides(record, *earlier);
  } else if (!batch.classes.Insert(at.place, &record)) {
    return {.cause = RefusalCause::kOutOfMemory};
  }
  return {};
}

Refusal CheckClasses(const MfListT<MfIntfClassT>& classes, PublishIndexT& batch,
                     const PublishIndexT& merged) {
  if (classes.count == 0) return {};
  ModuleRoles roles(batch, merged);
  if (!roles.Start()) return {.cause = RefusalCause::kOutOfMemory};
  for (MfIntfClassT* record : classes) {
    if (Refusal refusal = CheckClass(*record, roles, batch, merged)) return refusal;
  }
  roles.SortLists();
  return {};
}

}  // namespace

Refusal CheckBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes,
                   PublishIndexT& batch, const PublishIndexT& merged) {
  if (Refusal refusal = CheckModules(modules, batch, merged)) return refusal;
  return CheckClasses(classes, batch, merged);
}

Refusal CheckFirstBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes) {
  PublishIndexT batch;
  return CheckBatch(modules, classes, batch, PublishIndexT());
}

}  // namespace tarnmf
