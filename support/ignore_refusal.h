// SPDX-License-Identifier: Apache-2.0
// Drops a code on purpose.
#ifndef SUPPORT_IGNORE_REFUSAL_H
#define SUPPORT_IGNORE_REFUSAL_H

#include "platform/errors.h"

namespace tarnmf {

// For the few operations whose refusal changes nothing for the caller. Who uses it says why.
inline void IgnoreRefusal(BtkErrorT) {}

}  // namespace tarnmf

#endif  // SUPPORT_IGNORE_REFUSAL_H
