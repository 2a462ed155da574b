// SPDX-License-Identifier: Apache-2.0
// Managers that write down every call and answer as a test tells them.
#ifndef TESTS_SUPPORT_RECORDING_MANAGERS_H
#define TESTS_SUPPORT_RECORDING_MANAGERS_H

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/ignore_refusal.h"
#include "tests/support/call_text.h"
#include "tests/support/fault.h"
#include "tests/support/ids.h"
#include "tests/support/installed_managers.h"

namespace tarnmf::test {

// The platform's three managers in one object, which is installed while it lives; the embedded
// managers are restored after it. Every call is one line of `calls`: the operation and all its
// arguments except result parameters, in order.
//
// Every operation answers 0 unless Refuse says otherwise. Nothing here uses the platform's
// allocators, so that a failure sweep counts the allocations of the library alone.
class RecordingManagers final : public btkDlmManager,
                                public btkServiceManager,
                                public btkHostIntfRegistry {
 public:
  std::vector<std::string> calls;

  // Calls whose line starts with `prefix` answer `code`; of several that fit, the one added last.
  void Refuse(const std::string& prefix, BtkErrorT code) { refusals_.emplace_back(prefix, code); }
  void RefuseNothing() { refusals_.clear(); }

  // Runs in every call, once its line is written, and is told the line. A code that it gives is the
  // answer.
  std::function<BtkErrorT(const std::string& line)> onCall;

  // ---- What successful operations hand out ------------------------------------------------------
  // A module resolves to "LOADPOINT/MACHINE/NAME", with "native" for an empty machine and the
  // module's id where it has no name. The id of a load point is made from its path.

  // Unset: false for every load point.
  std::function<bool(const btkWChar* loadpoint, const char* machine)> machineVariant;
  UniIdT processScope{};
  std::int16_t serviceVersion = 0;  // of every service; the oldest supported one is 0
  // Unset: the id stays as it is.
  std::function<UniIdT(std::string_view name)> externalService;

  BtkErrorT QueryLoadpointId(UniIdT* id, const btkWChar* path) override {
    const BtkErrorT answer = Record(Line("QueryLoadpointId", path));
    if (answer == kBtkOk && path != nullptr)
      *id = Id(static_cast<std::uint32_t>(std::hash<std::string>{}(Ascii(path)) % 100000));
    return answer;
  }

  BtkErrorT RegisterInstallation(const btkWChar* base, const UniIdT* scope) override {
    return Record(Line("RegisterInstallation", base, scope));
  }

  BtkErrorT RegisterProcessLoadpoint(UniIdT* scope, const btkWChar* path) override {
    const BtkErrorT answer = Record(Line("RegisterProcessLoadpoint", path));
    if (answer == kBtkOk) *scope = processScope;
    return answer;
  }

  BtkErrorT RegisterLayout(const btkWChar* base, const char* machine, const btkWChar* text1,
                           const btkWChar* text2, const btkWChar* const* list1,
                           const btkWChar* const* list2, const btkWChar* const* list3,
                           bool flag) override {
    return Record(Line("RegisterLayout", base, machine, text1, text2, list1, list2, list3, flag));
  }

  bool HasMachineVariant(const btkWChar* loadpoint, const char* machine) override {
    // The question has no code to fail with.
    IgnoreRefusal(Record(Line("HasMachineVariant", loadpoint, machine)));
    return machineVariant && machineVariant(loadpoint, machine);
  }

  BtkErrorT ResolveModule(btkZString* result, const char* id, const char* type,
                          const btkWChar* name, const btkWChar* path, std::uint32_t flags,
                          const btkWChar* loadpoint, const char* machine, std::int32_t abits,
                          const btkModuleVersionT* version) override {
    const BtkErrorT answer = Record(Line("ResolveModule", id, type, name, path, flags, loadpoint,
                                         machine, abits, VersionText(version)));
    if (answer != kBtkOk) return answer;
    const std::string folder = machine == nullptr || *machine == 0 ? "native" : machine;
    *result = ((loadpoint != nullptr ? Ascii(loadpoint) : "") + '/' + folder + '/' +
               (name != nullptr ? Ascii(name) : id))
                  .c_str();
    return answer;
  }

  BtkErrorT PreloadModule(void** handle, const char* path, std::int32_t reserved1,
                          std::int32_t reserved2, void* reserved3, void* reserved4) override {
    if (handle != nullptr) *handle = nullptr;
    return Record(Line("PreloadModule", path, reserved1, reserved2,
                       static_cast<const void*>(reserved3), static_cast<const void*>(reserved4)));
  }

  BtkErrorT RegisterRunnable(btkZString* /*result*/, const char* name, const char* moduleref,
                             const char* launcher, const btkWChar* loadpoint, std::int32_t reserved,
                             const btkWChar* const* args, const EnvCmdT* env, std::int32_t envCount,
                             std::int32_t initstate) override {
    return Record(Line("RegisterRunnable", name, moduleref, launcher, loadpoint, reserved, args,
                       EnvText(env, envCount), initstate));
  }

  BtkErrorT DefineService(const UniIdT* id, const btkWChar* loadpoint, const char* idText,
                          const UniIdT* model, std::uint32_t flags, std::int32_t reserved1,
                          std::int32_t reserved2, std::int32_t reserved3) override {
    return Record(Line("DefineService", id, loadpoint, idText, model, flags, reserved1, reserved2,
                       reserved3));
  }

  BtkErrorT SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint, const char* commonname,
                           std::int16_t version, std::int32_t mode) override {
    return Record(Line("SetServiceInfo", id, loadpoint, commonname, version, mode));
  }

  BtkErrorT QueryServiceVersions(std::int16_t* version, std::int16_t* minVersion, const UniIdT* id,
                                 const btkWChar* loadpoint) override {
    const BtkErrorT answer = Record(Line("QueryServiceVersions", id, loadpoint));
    if (answer != kBtkOk) return answer;
    *version = serviceVersion;
    *minVersion = 0;
    return answer;
  }

  BtkErrorT ResolveExternalService(UniIdT* id, const char* name, std::int16_t version,
                                   std::int16_t reserved, const btkWChar* loadpoint) override {
    const BtkErrorT answer =
        Record(Line("ResolveExternalService", name, version, reserved, loadpoint));
    if (answer == kBtkOk && externalService) *id = externalService(name);
    return answer;
  }

  BtkErrorT AddServiceInstance(const void* reserved1, const UniIdT* id, const btkWChar* loadpoint,
                               const char* text, std::int32_t reserved2) override {
    return Record(Line("AddServiceInstance", reserved1, id, loadpoint, text, reserved2));
  }

  // One line, with the entries in braces: "{id, module, commonname, displayname, version, shared,
  // multiplicityOrigin}".
  BtkErrorT PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                           bool publish) override {
    std::string list;
    for (std::uint64_t i = 0; i < count; ++i) {
      const IntfRefEntryT& e = entries[i];
      list += '{' +
              List(e.intfId, e.module, e.commonname, e.displayname, e.version, e.shared,
                   e.multiplicityOrigin) +
              '}';
    }
    return Record(Line("PublishRefList", '[' + list + ']', count, publish));
  }

 private:
  BtkErrorT Record(const std::string& line) {
    BtkErrorT answer = kBtkOk;
    for (const auto& [prefix, code] : refusals_) {
      if (line.starts_with(prefix)) answer = code;
    }
    calls.push_back(line);
    const BtkErrorT told = onCall ? onCall(line) : kBtkOk;
    return told != kBtkOk ? told : answer;
  }

  std::vector<std::pair<std::string, BtkErrorT>> refusals_;
  const InstalledManagers installed_{this, this};
};

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_RECORDING_MANAGERS_H
