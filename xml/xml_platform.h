// SPDX-License-Identifier: Apache-2.0
// The process-wide use count of the XML library.
#ifndef XML_XML_PLATFORM_H
#define XML_XML_PLATFORM_H

#include <cstdint>

namespace tarnmf {

// Takes one use; the first one initialises the XML library. Returns its status: kBtkNotReady,
// kBtkStarting while another thread initialises it, or kBtkOk.
std::int32_t AcquireXmlPlatform();

// Drops one use; the last one terminates the XML library.
void ReleaseXmlPlatform();

// Identifies this library towards the platform and, put on the exit list, reports its exit.
void NotifyDlmExit();

// Run by every factory of parsers and loaders: takes one more use of the XML library, once per
// process, and leaves its release to the platform's clean-up. Safe on several threads.
void EnsureFactoryUse();

}  // namespace tarnmf

#endif  // XML_XML_PLATFORM_H
