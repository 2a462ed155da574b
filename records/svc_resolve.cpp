// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/svc_resolve.h"

MfSvcResolveT& MfSvcResolveT::operator=(const MfSvcResolveT& other) = default;
// Nothing is owned, so a move has nothing to take away.
MfSvcResolveT& MfSvcResolveT::operator=(MfSvcResolveT&& other) {
  return *this = static_cast<const MfSvcResolveT&>(other);
}
