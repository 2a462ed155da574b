// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/no_network.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLNetAccessor.hpp>

namespace tool {

void ForbidConnections() {
  // Never ended: what counts its uses after this finds it initialised.
  xercesc::XMLPlatformUtils::Initialize();
  delete xercesc::XMLPlatformUtils::fgNetAccessor;
  xercesc::XMLPlatformUtils::fgNetAccessor = nullptr;
}

}  // namespace tool
