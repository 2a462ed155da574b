// Managers that write down every call and answer as a test tells them.
#ifndef TESTS_SUPPORT_RECORDING_MANAGERS_H
#define TESTS_SUPPORT_RECORDING_MANAGERS_H

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host/btkhost.h"

namespace tarnmf::test {

struct PlatformException : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The id whose last bytes are `number`, and the text that a call line shows for an id: "#number",
// or the 36 characters where the id is none of these.
UniIdT Id(std::uint32_t number);
std::string IdText(const UniIdT& id);

// The platform's three managers in one object, which is installed while it lives; the embedded
// managers are restored after it. Every call is one line of `calls`: the operation and all its
// arguments except result parameters, in order. Texts are quoted, non-ASCII units written as
// \uXXXX; a null pointer is null.
//
// Every operation answers 0 unless Refuse says otherwise. Nothing here uses the platform's
// allocators, so that a failure sweep counts the allocations of the library alone.
class RecordingManagers final : public btkDlmManager,
                                public btkServiceManager,
                                public btkHostIntfRegistry {
 public:
  RecordingManagers();
  RecordingManagers(const RecordingManagers&) = delete;
  RecordingManagers& operator=(const RecordingManagers&) = delete;
  ~RecordingManagers() override;

  std::vector<std::string> calls;

  // Calls whose line starts with `prefix` answer `code`; of several that fit, the one added last.
  void Refuse(std::string prefix, BtkErrorT code) { refusals_.emplace_back(prefix, code); }
  void RefuseNothing() { refusals_.clear(); }

  // The n-th call from now on (counted from 0) throws a PlatformException, once; its line is
  // written first. A negative n switches this off.
  void ThrowAt(int n) { callsToThrow_ = n; }

  // Runs in every call, once its line is written.
  std::function<void()> onCall;

  // ---- What successful operations hand out ------------------------------------------------------
  // A module resolves to "LOADPOINT/MACHINE/NAME", with "native" for an empty machine and the
  // module's id where it has no name. The id of a load point is made from its path.

  // Unset: false for every load point.
  std::function<bool(const btkWChar* loadpoint, const char* machine)> machineVariant;
  UniIdT processScope{};
  std::int16_t serviceVersion = 0;  // of every service; the oldest supported one is 0
  // Unset: the id stays as it is.
  std::function<UniIdT(std::string_view name)> externalService;

  BtkErrorT QueryLoadpointId(UniIdT* id, const btkWChar* path) override;
  BtkErrorT RegisterInstallation(const btkWChar* base, const UniIdT* scope) override;
  BtkErrorT RegisterProcessLoadpoint(UniIdT* scope, const btkWChar* path) override;
  BtkErrorT RegisterLayout(const btkWChar* base, const char* machine, const btkWChar* text1,
                           const btkWChar* text2, const btkWChar* const* list1,
                           const btkWChar* const* list2, const btkWChar* const* list3,
                           bool flag) override;
  bool HasMachineVariant(const btkWChar* loadpoint, const char* machine) override;
  BtkErrorT ResolveModule(btkZString* result, const char* id, const char* type,
                          const btkWChar* name, const btkWChar* path, std::uint32_t flags,
                          const btkWChar* loadpoint, const char* machine, std::int32_t abits,
                          const btkModuleVersionT* version) override;
  BtkErrorT PreloadModule(void** handle, const char* path, std::int32_t reserved1,
                          std::int32_t reserved2, void* reserved3, void* reserved4) override;
  BtkErrorT RegisterRunnable(btkZString* result, const char* name, const char* moduleref,
                             const char* launcher, const btkWChar* loadpoint, std::int32_t reserved,
                             const btkWChar* const* args, const EnvCmdT* env, std::int32_t envCount,
                             std::int32_t initstate) override;

  BtkErrorT DefineService(const UniIdT* id, const btkWChar* loadpoint, const char* idText,
                          const UniIdT* model, std::uint32_t flags, std::int32_t reserved1,
                          std::int32_t reserved2, std::int32_t reserved3) override;
  BtkErrorT SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint, const char* commonname,
                           std::int16_t version, std::int32_t mode) override;
  BtkErrorT QueryServiceVersions(std::int16_t* version, std::int16_t* minVersion, const UniIdT* id,
                                 const btkWChar* loadpoint) override;
  BtkErrorT ResolveExternalService(UniIdT* id, const char* name, std::int16_t version,
                                   std::int16_t reserved, const btkWChar* loadpoint) override;
  BtkErrorT AddServiceInstance(const void* reserved1, const UniIdT* id, const btkWChar* loadpoint,
                               const char* text, std::int32_t reserved2) override;

  // One line, with the entries in braces: "{id, module, commonname, displayname, version, shared,
  // multiplicityOrigin}".
  BtkErrorT PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                           bool publish) override;

 private:
  BtkErrorT Record(std::string line);

  std::vector<std::pair<std::string, BtkErrorT>> refusals_;
  int callsToThrow_ = -1;
};

// The machine types that the platform answers while this lives.
class MachineTypes {
 public:
  MachineTypes(const char* native, const char* other) { btkHostSetMachineTypes(native, other); }
  MachineTypes(const MachineTypes&) = delete;
  MachineTypes& operator=(const MachineTypes&) = delete;
  ~MachineTypes() { btkHostSetMachineTypes(nullptr, nullptr); }
};

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_RECORDING_MANAGERS_H
