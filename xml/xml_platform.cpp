// SPDX-License-Identifier: Apache-2.0
#include "xml/xml_platform.h"

#include <cstdlib>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "platform/errors.h"
#include "platform/runtime.h"

namespace tarnmf {
namespace {

std::int32_t useCount = 0;
std::int32_t xmlStatus = kBtkNotReady;

// The library holds one use from its load to its exit, so that parsing never has to check.
[[maybe_unused]] const bool usedSinceLoad = [] {
  AcquireXmlPlatform();
  std::atexit(ReleaseXmlPlatform);
  return true;
}();

}  // namespace

std::int32_t AcquireXmlPlatform() {
  if (btkAoInc32(&useCount) == 1) {
    xmlStatus = kBtkStarting;
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, nullptr,
                                          nullptr);
    xmlStatus = kBtkOk;
  }
  return xmlStatus;
}

void ReleaseXmlPlatform() {
  if (btkAoDec32(&useCount) == 0) {
    xercesc::XMLPlatformUtils::Terminate();
    xmlStatus = kBtkNotReady;
  }
}

void NotifyDlmExit() {
  btkDlmExitNotify(NotifyDlmExit);
}

void EnsureFactoryUse() {
  [[maybe_unused]] static const std::int32_t factoryStatus = [] {
    const std::int32_t status = AcquireXmlPlatform();
    try {
      if (btkPushCleanupCbLow(NotifyDlmExit, ReleaseXmlPlatform, 0) == 1) {
        std::atexit(NotifyDlmExit);
      }
    } catch (...) {
      ReleaseXmlPlatform();  // nobody would; the next factory starts anew
      throw;
    }
    return status;
  }();
}

}  // namespace tarnmf
