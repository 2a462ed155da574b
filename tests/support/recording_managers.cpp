#include "tests/support/recording_managers.h"

#include <cstdio>
#include <string_view>
#include <type_traits>

#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"
#include "support/ignore_refusal.h"

namespace tarnmf::test {
namespace {

std::string Hex(const char* format, unsigned value) {
  char text[16];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

template <class Char>
std::string Ascii(const Char* text) {
  std::string result;
  for (; *text != 0; ++text) {
    if constexpr (sizeof(Char) == 1) {
      result += *text;
    } else {
      const auto unit = static_cast<unsigned>(*text);
      result += unit < 0x80 ? std::string(1, static_cast<char>(unit)) : Hex("\\u%04X", unit);
    }
  }
  return result;
}

template <class Char>
requires(std::is_same_v<Char, char> || std::is_same_v<Char, btkWChar>) std::string
    Shown(const Char* text) {
  return text == nullptr ? "null" : '"' + Ascii(text) + '"';
}
std::string Shown(const UniIdT* id) {
  return id == nullptr ? "null" : IdText(*id);
}
std::string Shown(const void* pointer) {
  return pointer == nullptr ? "null" : "pointer";
}
std::string Shown(bool value) {
  return value ? "true" : "false";
}
template <class Number>
requires std::is_integral_v<Number> std::string Shown(Number value) {
  return std::to_string(value);
}
std::string Shown(const std::string& shown) {
  return shown;
}

// A list of texts that ends with a null pointer.
std::string Shown(const btkWChar* const* list) {
  if (list == nullptr) return "null";
  std::string line;
  for (; *list != nullptr; ++list)
    line += (line.empty() ? "" : ", ") + Shown(*list);
  return '[' + line + ']';
}

template <class First, class... Rest>
std::string List(const First& first, const Rest&... rest) {
  std::string line = Shown(first);
  ((line += ", " + Shown(rest)), ...);
  return line;
}

template <class... Arguments>
std::string Line(const char* operation, const Arguments&... arguments) {
  return operation + ('(' + List(arguments...) + ')');
}

std::string EnvText(const EnvCmdT* env, std::int32_t count) {
  std::string line;
  for (std::int32_t i = 0; i < count; ++i) {
    line +=
        '{' + List(static_cast<int>(env[i].action), env[i].flags, env[i].name, env[i].value) + '}';
  }
  return '[' + line + ']';
}

std::string VersionText(const btkModuleVersionT* version) {
  if (version == nullptr) return "null";
  std::string line = "v";
  for (std::uint32_t word : version->version)
    line += std::to_string(word) + '.';
  return line + "api" + std::to_string(version->apilevel);
}

}  // namespace

UniIdT Id(std::uint32_t number) {
  UniIdT id{};
  for (int i = 15; i >= 12; --i, number >>= 8)
    id.bytes[i] = static_cast<std::uint8_t>(number);
  return id;
}

std::string IdText(const UniIdT& id) {
  char text[kBtkUniIdDashedLength + 1] = {};
  std::size_t length = 0;
  tarnmf::IgnoreRefusal(  // the text fits
      btkUniIdFormat(text, sizeof text, &length, &id, kBtkUniIdDashed, 0));
  constexpr std::string_view kNumbered = "00000000-0000-0000-0000-0000";
  if (!std::string_view(text).starts_with(kNumbered)) return text;
  return '#' + std::to_string(std::stoul(text + kNumbered.size(), nullptr, 16));
}

RecordingManagers::RecordingManagers() {
  btkHostSetDlmManager(this);
  btkHostSetServiceManager(this);
  btkHostSetIntfRegistry(this);
}

RecordingManagers::~RecordingManagers() {
  btkHostSetDlmManager(&btkHostEmbeddedDlmManager());
  btkHostSetServiceManager(&btkHostEmbeddedServiceManager());
  btkHostSetIntfRegistry(nullptr);
}

BtkErrorT RecordingManagers::Record(std::string line) {
  BtkErrorT answer = kBtkOk;
  for (const auto& [prefix, code] : refusals_) {
    if (line.starts_with(prefix)) answer = code;
  }
  calls.push_back(std::move(line));
  if (onCall) onCall();
  if (callsToThrow_ >= 0 && callsToThrow_-- == 0) throw PlatformException(calls.back());
  return answer;
}

BtkErrorT RecordingManagers::QueryLoadpointId(UniIdT* id, const btkWChar* path) {
  const BtkErrorT answer = Record(Line("QueryLoadpointId", path));
  if (answer == kBtkOk && path != nullptr)
    *id = Id(static_cast<std::uint32_t>(std::hash<std::string>{}(Ascii(path)) % 100000));
  return answer;
}

BtkErrorT RecordingManagers::RegisterInstallation(const btkWChar* base, const UniIdT* scope) {
  return Record(Line("RegisterInstallation", base, scope));
}

BtkErrorT RecordingManagers::RegisterProcessLoadpoint(UniIdT* scope, const btkWChar* path) {
  const BtkErrorT answer = Record(Line("RegisterProcessLoadpoint", path));
  if (answer == kBtkOk) *scope = processScope;
  return answer;
}

BtkErrorT RecordingManagers::RegisterLayout(const btkWChar* base, const char* machine,
                                            const btkWChar* text1, const btkWChar* text2,
                                            const btkWChar* const* list1,
                                            const btkWChar* const* list2,
                                            const btkWChar* const* list3, bool flag) {
  return Record(Line("RegisterLayout", base, machine, text1, text2, list1, list2, list3, flag));
}

bool RecordingManagers::HasMachineVariant(const btkWChar* loadpoint, const char* machine) {
  // The question has no code to fail with.
  tarnmf::IgnoreRefusal(Record(Line("HasMachineVariant", loadpoint, machine)));
  return machineVariant && machineVariant(loadpoint, machine);
}

BtkErrorT RecordingManagers::ResolveModule(btkZString* result, const char* id, const char* type,
                                           const btkWChar* name, const btkWChar* path,
                                           std::uint32_t flags, const btkWChar* loadpoint,
                                           const char* machine, std::int32_t abits,
                                           const btkModuleVersionT* version) {
  const BtkErrorT answer = Record(Line("ResolveModule", id, type, name, path, flags, loadpoint,
                                       machine, abits, VersionText(version)));
  if (answer != kBtkOk) return answer;
  const std::string folder = machine == nullptr || *machine == 0 ? "native" : machine;
  *result = ((loadpoint != nullptr ? Ascii(loadpoint) : "") + '/' + folder + '/' +
             (name != nullptr ? Ascii(name) : id))
                .c_str();
  return answer;
}

BtkErrorT RecordingManagers::PreloadModule(void** handle, const char* path, std::int32_t reserved1,
                                           std::int32_t reserved2, void* reserved3,
                                           void* reserved4) {
  if (handle != nullptr) *handle = nullptr;
  return Record(Line("PreloadModule", path, reserved1, reserved2,
                     static_cast<const void*>(reserved3), static_cast<const void*>(reserved4)));
}

BtkErrorT RecordingManagers::RegisterRunnable(btkZString* /*result*/, const char* name,
                                              const char* moduleref, const char* launcher,
                                              const btkWChar* loadpoint, std::int32_t reserved,
                                              const btkWChar* const* args, const EnvCmdT* env,
                                              std::int32_t envCount, std::int32_t initstate) {
  return Record(Line("RegisterRunnable", name, moduleref, launcher, loadpoint, reserved, args,
                     EnvText(env, envCount), initstate));
}

BtkErrorT RecordingManagers::DefineService(const UniIdT* id, const btkWChar* loadpoint,
                                           const char* idText, const UniIdT* model,
                                           std::uint32_t flags, std::int32_t reserved1,
                                           std::int32_t reserved2, std::int32_t reserved3) {
  return Record(
      Line("DefineService", id, loadpoint, idText, model, flags, reserved1, reserved2, reserved3));
}

BtkErrorT RecordingManagers::SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint,
                                            const char* commonname, std::int16_t version,
                                            std::int32_t mode) {
  return Record(Line("SetServiceInfo", id, loadpoint, commonname, version, mode));
}

BtkErrorT RecordingManagers::QueryServiceVersions(std::int16_t* version, std::int16_t* minVersion,
                                                  const UniIdT* id, const btkWChar* loadpoint) {
  const BtkErrorT answer = Record(Line("QueryServiceVersions", id, loadpoint));
  if (answer != kBtkOk) return answer;
  *version = serviceVersion;
  *minVersion = 0;
  return answer;
}

BtkErrorT RecordingManagers::ResolveExternalService(UniIdT* id, const char* name,
                                                    std::int16_t version, std::int16_t reserved,
                                                    const btkWChar* loadpoint) {
  const BtkErrorT answer =
      Record(Line("ResolveExternalService", name, version, reserved, loadpoint));
  if (answer == kBtkOk && externalService) *id = externalService(name);
  return answer;
}

BtkErrorT RecordingManagers::AddServiceInstance(const void* reserved1, const UniIdT* id,
                                                const btkWChar* loadpoint, const char* text,
                                                std::int32_t reserved2) {
  return Record(Line("AddServiceInstance", reserved1, id, loadpoint, text, reserved2));
}

BtkErrorT RecordingManagers::PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                                            bool publish) {
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

}  // namespace tarnmf::test
