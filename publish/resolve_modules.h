// SPDX-License-Identifier: Apache-2.0
// Finds the files of modules.
#ifndef PUBLISH_RESOLVE_MODULES_H
#define PUBLISH_RESOLVE_MODULES_H

#include "platform/errors.h"
#include "publish/publish_index.h"

namespace tarnmf {

// Asks the dynamic-library manager for the file of each module's selected implementation and keeps
// its path in the implementation; where there is no such file, of the module's first one, which is
// then selected. Executables are resolved for the platform's other machine type, too, where their
// load point offers programs for it. A module that cannot be resolved is no failure. Codes:
// kBtkOk; kBtkNotReady, no dynamic-library manager.
BtkErrorT ResolveModules(const NewModules& modules);

}  // namespace tarnmf

#endif  // PUBLISH_RESOLVE_MODULES_H
