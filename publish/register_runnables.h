// SPDX-License-Identifier: Apache-2.0
// Registers what can be started.
#ifndef PUBLISH_REGISTER_RUNNABLES_H
#define PUBLISH_REGISTER_RUNNABLES_H

#include "platform/errors.h"
#include "publish/publish_index.h"

namespace tarnmf {

// Registers the launchers, apps and services of each runnable with the dynamic-library manager and
// defines the services with the service manager. The first refusal ends the call. Codes: kBtkOk;
// kBtkNotReady, no dynamic-library manager; kBtkMissing, no service manager, and a service has to be
// defined; others as the managers returned them.
//
// A service that the environment variable TARN_SERVICE_MI_DEBUG names by its 36-character id is
// registered like a single-instance one and is not recovered, so that it can be started by hand
// and watched. The variable is read at each call.
BtkErrorT RegisterRunnables(const NewRunnables& runnables);

}  // namespace tarnmf

#endif  // PUBLISH_REGISTER_RUNNABLES_H
