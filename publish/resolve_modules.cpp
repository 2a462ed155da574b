// SPDX-License-Identifier: Apache-2.0
#include "publish/resolve_modules.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "platform/dlm.h"
#include "platform/memory.h"
#include "platform/runtime.h"
#include "publish/fetch_ahead.h"

namespace tarnmf {
namespace {

constexpr char kOwnMachine[] = "";
// The flags of an implementation that say how its path and name are to be read.
constexpr std::uint32_t kResolveFlags = kMfImplForcePath | kMfImplExplicitName;
static_assert(kResolveFlags == (kBtkForcePath | kBtkExplicitName));

// The questions about one module. The text of the last answer is shared by them.
class ModuleResolver {
 public:
  ModuleResolver(btkDlmManager& dlm, MfModuleT& module) : dlm_(dlm), module_(module) {}

  // Tells the manager of a module that belongs to no load point; it has no file to keep.
  void Announce() { Ask(*module_.selectedImpl, nullptr); }

  void ResolveSelected() {
    MfModuleImplT* const first = module_.impls[0];
    if (ResolveTo(*module_.selectedImpl, kOwnMachine) || module_.selectedImpl == first) return;
    if (ResolveTo(*first, kOwnMachine)) module_.selectedImpl = first;
  }

  void ResolveVariant(const char* machine) {
    if (module_.type == nullptr || btk_strcasecmp(module_.type, kBtkExecutableType) != 0) return;
    if (!dlm_.HasMachineVariant(module_.loadpoint, machine)) return;
    if (MfModuleImplT* const variant = FindImplementation(module_, machine)) {
      ResolveTo(*variant, machine);
    } else {
      Ask(*module_.selectedImpl, machine);
    }
  }

 private:
  bool Ask(const MfModuleImplT& impl, const char* machine) {
    btkModuleVersionT version;
    std::copy_n(impl.version, 4, version.version);
    version.apilevel = impl.apilevel;
    return dlm_.ResolveModule(&result_, module_.id, module_.type, impl.name, impl.path,
                              impl.flags & kResolveFlags, module_.loadpoint, machine, impl.abits,
                              &version) == kBtkOk;
  }

  // When out of memory the implementation keeps what it had: the module then goes by its id, like one
  // that has no file.
  bool ResolveTo(MfModuleImplT& impl, const char* machine) {
    if (!Ask(impl, machine)) return false;
    if (char* const path = btk_strdup(result_.Text())) {
      btkStrFree(std::exchange(impl.resolvedPath, path));
    }
    return true;
  }

  btkDlmManager& dlm_;
  MfModuleT& module_;
  btkZString result_;
};

void FetchSelected(const MfModuleT& module) {
  Prefetch(module.selectedImpl);
  Prefetch(&module.selectedImpl->resolvedPath);
}

}  // namespace

BtkErrorT ResolveModules(const NewModules& modules) {
  btkDlmManager* const dlm = btkDlmManager::Instance();
  if (dlm == nullptr) return kBtkNotReady;
  const char* const native = btkGetVexMachine();
  const char* const alternate = btkGetVexMachine3264("");
  const bool hasAlternate = std::strcmp(native, alternate) != 0;
  for (std::int32_t i = 0; i < modules.Count(); ++i) {
    FetchAhead(modules, modules.Count(), i, FetchSelected);
    MfModuleT* const module = modules[i];
    ModuleResolver resolver(*dlm, *module);
    if (module->loadpoint == nullptr && module->selectedImpl->machinetype == nullptr) {
      resolver.Announce();
      continue;
    }
    resolver.ResolveSelected();
    if (hasAlternate) resolver.ResolveVariant(alternate);
  }
  return kBtkOk;
}

}  // namespace tarnmf
