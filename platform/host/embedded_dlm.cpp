#include "platform/host/embedded_dlm.h"

#include <filesystem>
#include <system_error>
#include <uuid/uuid.h>

#include "platform/host/file_status.h"
#include "platform/host/path_rules.h"

#if defined(_WIN32)
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

// The names of load-point ids hang below this one.
constexpr UniIdT kLoadpointNamespace = {{0x1d, 0x92, 0x6e, 0x40, 0x35, 0xb8, 0x4f, 0x61, 0x8c, 0x07,
                                         0x29, 0xfa, 0xe3, 0x54, 0xbd, 0x18}};

btkHostWideT TextOf(const btkWChar* text) {
  return text != nullptr ? text : BTK_W("");
}
std::string TextOf(const char* text) {
  return text != nullptr ? text : "";
}

template <class Text, class Char>
std::optional<Text> OptionalText(const Char* text) {
  return text != nullptr ? std::optional<Text>(text) : std::nullopt;
}

// The strings of an array that ends with a null pointer.
std::vector<btkHostWideT> TextsOf(const btkWChar* const* list) {
  std::vector<btkHostWideT> texts;
  for (; list != nullptr && *list != nullptr; ++list)
    texts.emplace_back(*list);
  return texts;
}

btkHostEnvCmdT CopyOf(const EnvCmdT& command) {
  return {command.action, command.flags & ~static_cast<std::uint32_t>(kEnvCmdOwnsText),
          TextOf(command.name), OptionalText<btkHostWideT>(command.value)};
}

// ---- Where the file of a module may lie --------------------------------------------------------

std::string NarrowOf(const btkWChar* text) {
  return btkFSPath(text).NarrowText();
}

std::string FileName(const char* type, const btkWChar* name, std::uint32_t flags) {
  std::string plain = NarrowOf(name);
  if ((flags & kBtkExplicitName) != 0) return plain;
#if defined(_WIN32)
  return plain + (btkIsSharedLibType(type) ? ".dll" : ".exe");
#else
  return btkIsSharedLibType(type) ? "lib" + plain + ".so" : plain;
#endif
}

// Where a module's file may be, in the order in which it is looked for.
std::vector<std::string> Candidates(const std::string& fileName, const btkWChar* path,
                                    std::uint32_t flags, const btkWChar* loadpoint,
                                    const char* machine) {
  const std::string folder = NarrowOf(path);
  if ((flags & kBtkForcePath) != 0) return {JoinPath({folder, fileName})};
  if (loadpoint == nullptr || *loadpoint == 0) return {};
  const std::string root = NarrowOf(loadpoint);
  const bool native = machine == nullptr || *machine == '\0';
  return {JoinPath({root, native ? btkGetVexMachine() : machine, folder, fileName}),
          JoinPath({root, folder, fileName})};
}

}  // namespace

BtkErrorT btkHostDlmManager::QueryLoadpointId(UniIdT* id, const btkWChar* path) {
  *id = {};
  std::string name = btkFSPath(path).NarrowText();
  if (name.empty()) return kBtkOk;
  // Paths that compare equal have one id.
  if (name.size() > 1 && IsPathSeparator(name.back())) name.pop_back();
  uuid_generate_sha1(id->bytes, kLoadpointNamespace.bytes, name.data(), name.size());
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::RegisterInstallation(const btkWChar* base, const UniIdT* scope) {
  installations_.push_back({TextOf(base), *scope});
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::RegisterProcessLoadpoint(UniIdT* /*scope*/, const btkWChar* path) {
  processLoadpoints_.push_back(TextOf(path));
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::RegisterLayout(const btkWChar* base, const char* machine,
                                            const btkWChar* text1, const btkWChar* text2,
                                            const btkWChar* const* list1,
                                            const btkWChar* const* list2,
                                            const btkWChar* const* list3, bool flag) {
  layouts_.push_back({TextOf(base),
                      TextOf(machine),
                      OptionalText<btkHostWideT>(text1),
                      OptionalText<btkHostWideT>(text2),
                      {TextsOf(list1), TextsOf(list2), TextsOf(list3)},
                      flag});
  return kBtkOk;
}

bool btkHostDlmManager::HasMachineVariant(const btkWChar* loadpoint, const char* machine) {
  if (loadpoint == nullptr) return false;
  std::error_code error;
  return std::filesystem::is_directory(JoinPath({NarrowOf(loadpoint), TextOf(machine)}), error);
}

BtkErrorT btkHostDlmManager::ResolveModule(btkZString* result, const char* id, const char* type,
                                           const btkWChar* name, const btkWChar* path,
                                           std::uint32_t flags, const btkWChar* loadpoint,
                                           const char* machine, std::int32_t /*abits*/,
                                           const btkModuleVersionT* /*version*/) {
  resolutions_.push_back({TextOf(id), TextOf(loadpoint), TextOf(machine), {}, {}});
  btkHostResolutionT& resolution = resolutions_.back();
  for (std::string& file :
       Candidates(FileName(type, name, flags), path, flags, loadpoint, machine)) {
    if (IsRegularFile(file.c_str())) resolution.file = file;
    resolution.tried.push_back(std::move(file));
    if (!resolution.file.empty()) break;
  }
  const bool found = !resolution.file.empty();
  if (found) *result = resolution.file.c_str();
  return found ? kBtkOk : kBtkNotFound;
}

BtkErrorT btkHostDlmManager::PreloadModule(void** handle, const char* path,
                                           std::int32_t /*reserved1*/, std::int32_t /*reserved2*/,
                                           void* /*reserved3*/, void* /*reserved4*/) {
  if (preloadMode_ == kBtkHostRecordsOnly) {
    preloads_.push_back({path, false, {}});
    return kBtkOk;
  }
#if defined(_WIN32)
  void* const loaded = LoadLibraryW(btkFSPath(path).WideText());
  std::string failure = loaded != nullptr ? "" : "the library cannot be loaded";
#else
  void* const loaded = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  std::string failure = loaded != nullptr ? "" : TextOf(dlerror());
#endif
  if (loaded != nullptr) *handle = loaded;
  preloads_.push_back({path, loaded != nullptr, std::move(failure)});
  return loaded != nullptr ? kBtkOk : kBtkNotFound;
}

BtkErrorT btkHostDlmManager::RegisterRunnable(btkZString* /*result*/, const char* name,
                                              const char* moduleref, const char* launcher,
                                              const btkWChar* loadpoint, std::int32_t /*reserved*/,
                                              const btkWChar* const* args, const EnvCmdT* env,
                                              std::int32_t envCount, std::int32_t initstate) {
  btkHostRunnableT runnable{
      TextOf(name),      TextOf(moduleref), OptionalText<std::string>(launcher),
      TextOf(loadpoint), TextsOf(args),     {},
      initstate};
  for (std::int32_t i = 0; i < envCount; ++i)
    runnable.env.push_back(CopyOf(env[i]));
  runnables_.push_back(std::move(runnable));
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                                            bool /*publish*/) {
  for (std::uint64_t i = 0; i < count; ++i) {
    const IntfRefEntryT& entry = entries[i];
    interfaceRefs_.push_back({*entry.intfId, TextOf(entry.module),
                              OptionalText<std::string>(entry.commonname),
                              OptionalText<std::string>(entry.displayname), entry.version,
                              entry.shared, entry.multiplicityOrigin});
  }
  return kBtkOk;
}
