// SPDX-License-Identifier: Apache-2.0
// Managers that agree to everything and keep nothing, so that what is measured is the library
// alone.
#ifndef BENCH_QUIET_MANAGERS_H
#define BENCH_QUIET_MANAGERS_H

#include "platform/host/embedded_dlm.h"
#include "tests/support/installed_managers.h"

namespace tarnmf::bench {

// Every module is found.
class QuietDlmManager : public btkDlmManager, public btkHostIntfRegistry {
 public:
  BtkErrorT QueryLoadpointId(UniIdT* id, const btkWChar* path) override {
    return btkHostEmbeddedDlmManager().QueryLoadpointId(id, path);
  }
  BtkErrorT RegisterInstallation(const btkWChar*, const UniIdT*) override { return kBtkOk; }
  BtkErrorT RegisterProcessLoadpoint(UniIdT*, const btkWChar*) override { return kBtkOk; }
  BtkErrorT RegisterLayout(const btkWChar*, const char*, const btkWChar*, const btkWChar*,
                           const btkWChar* const*, const btkWChar* const*, const btkWChar* const*,
                           bool) override {
    return kBtkOk;
  }
  bool HasMachineVariant(const btkWChar*, const char*) override { return false; }
  BtkErrorT ResolveModule(btkZString* result, const char*, const char*, const btkWChar*,
                          const btkWChar*, std::uint32_t, const btkWChar*, const char*,
                          std::int32_t, const btkModuleVersionT*) override {
    *result = "/opt/library.so";
    return kBtkOk;
  }
  BtkErrorT PreloadModule(void**, const char*, std::int32_t, std::int32_t, void*, void*) override {
    return kBtkOk;
  }
  BtkErrorT RegisterRunnable(btkZString*, const char*, const char*, const char*, const btkWChar*,
                             std::int32_t, const btkWChar* const*, const EnvCmdT*, std::int32_t,
                             std::int32_t) override {
    return kBtkOk;
  }
  BtkErrorT PublishRefList(const IntfRefEntryT*, std::uint64_t, bool) override { return kBtkOk; }
};

// The versions of a service follow from its id.
class QuietServiceManager : public btkServiceManager {
 public:
  BtkErrorT DefineService(const UniIdT*, const btkWChar*, const char*, const UniIdT*, std::uint32_t,
                          std::int32_t, std::int32_t, std::int32_t) override {
    return kBtkOk;
  }
  BtkErrorT SetServiceInfo(const UniIdT*, const btkWChar*, const char*, std::int16_t,
                           std::int32_t) override {
    return kBtkOk;
  }
  BtkErrorT QueryServiceVersions(std::int16_t* version, std::int16_t* minVersion, const UniIdT* id,
                                 const btkWChar*) override {
    *version = static_cast<std::int16_t>((id->bytes[11] * 7 + id->bytes[15]) % 30);
    *minVersion = static_cast<std::int16_t>(*version / 2);
    return kBtkOk;
  }
  BtkErrorT ResolveExternalService(UniIdT*, const char*, std::int16_t, std::int16_t,
                                   const btkWChar*) override {
    return kBtkNotFound;
  }
  BtkErrorT AddServiceInstance(const void*, const UniIdT*, const btkWChar*, const char*,
                               std::int32_t) override {
    return kBtkOk;
  }
};

// Installs both while it lives.
class QuietManagers {
  QuietDlmManager dlm_;
  QuietServiceManager services_;
  const test::InstalledManagers installed_{&dlm_, &services_};
};

}  // namespace tarnmf::bench

#endif  // BENCH_QUIET_MANAGERS_H
