// SPDX-License-Identifier: Apache-2.0
// What the fuzz targets share.
#ifndef FUZZ_HARNESS_H
#define FUZZ_HARNESS_H

#include <cstdint>
#include <string>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "tests/support/installed_managers.h"

namespace tarnmf::fuzz {

// Stops the run where the library breaks a promise.
inline void Require(bool promise) {
  if (!promise) __builtin_trap();
}

inline std::string TextOf(const std::uint8_t* bytes, std::size_t size) {
  return std::string(reinterpret_cast<const char*>(bytes), size);
}

// The code of `work`; kBtkMalformed where the XML library throws.
template <class Work>
BtkErrorT WithoutXmlExceptions(Work work) {
  try {
    return work();
  } catch (const xercesc::XMLException&) {
  } catch (const xercesc::DOMException&) {
  } catch (const xercesc::OutOfMemoryException&) {
  }
  return kBtkMalformed;
}

// Managers in which nothing is registered, installed for the life of this object.
struct FreshManagers {
  btkHostDlmManager dlm;
  btkHostServiceManager services;
  const test::InstalledManagers installed{&dlm, &services};
};

}  // namespace tarnmf::fuzz

#endif  // FUZZ_HARNESS_H
