#include "publish/module_pass.h"

#include "platform/runtime.h"
#include "publish/implementations.h"

namespace tarnmf {
namespace {

// No two of the implementations behind the first may be for the same machine type.
bool HasDistinctMachines(const MfModuleT& module) {
  if (module.impls.count < 2) return true;
  GrowableArray<const char*, 2> machines;
  for (std::int32_t i = 1; i < module.impls.count; ++i) {
    const char* const type = module.impls[i]->machinetype;
    const BisectResult at =
        Bisect(machines.Count(), [&](std::int32_t k) { return CompareTexts(machines[k], type); });
    if (at.found || !machines.Insert(at.place, type)) return false;
  }
  return true;
}

MfModuleImplT* SelectImplementation(const MfModuleT& module, const char* machine) {
  MfModuleImplT* const native = FindImplementation(module, machine);
  return native != nullptr ? native : module.impls[0];
}

}  // namespace

bool RunModulePass(const MfListT<MfModuleT>& modules, PublishIndexT& batch,
                   const PublishIndexT& merged) {
  const char* const machine = btkGetVexMachine();
  for (MfModuleT* module : modules) {
    const BisectResult at = FindModule(batch.modules, module->id);
    if (at.found || FindModule(merged.modules, module->id).found) return false;
    if (module->impls.count <= 0 || !HasDistinctMachines(*module)) return false;
    module->selectedImpl = SelectImplementation(*module, machine);
    if (!batch.modules.Insert(at.place, module)) return false;
  }
  return true;
}

}  // namespace tarnmf
