// Looks for one of a module's implementations.
#ifndef PUBLISH_IMPLEMENTATIONS_H
#define PUBLISH_IMPLEMENTATIONS_H

#include <cstring>

#include "tarnmf/module.h"

namespace tarnmf {

// The implementation for `machine`, or null. The first one is for no machine in particular and is
// left out.
inline MfModuleImplT* FindImplementation(const MfModuleT& module, const char* machine) {
  for (std::int32_t i = 1; i < module.impls.count; ++i) {
    const char* const type = module.impls[i]->machinetype;
    if (type != nullptr && std::strcmp(type, machine) == 0) return module.impls[i];
  }
  return nullptr;
}

}  // namespace tarnmf

#endif  // PUBLISH_IMPLEMENTATIONS_H
