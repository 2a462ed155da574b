// SPDX-License-Identifier: Apache-2.0
// Tells the dynamic-library manager which library implements which interface.
#ifndef PUBLISH_REGISTER_INTERFACES_H
#define PUBLISH_REGISTER_INTERFACES_H

#include "tarnmf/intf_class.h"

#include "platform/dlm.h"
#include "platform/errors.h"
#include "publish/publish_index.h"

namespace tarnmf {

// Registers the sides of `classes` that `disposition` asks for, all in one call. In the agent view
// the service side's module reference of a service class becomes the resolved path. Codes: kBtkOk;
// kBtkNoMemory, nothing has been registered; others as the platform returned them.
BtkErrorT RegisterInterfaces(const NewClasses& classes, const SortedModules& modules,
                             IntfDispositionT disposition);

}  // namespace tarnmf

#endif  // PUBLISH_REGISTER_INTERFACES_H
