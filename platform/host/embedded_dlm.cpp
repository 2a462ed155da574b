// SPDX-License-Identifier: Apache-2.0
#include "platform/host/embedded_dlm.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <vector>

#include "platform/host/file_status.h"
#include "platform/host/id_sources.h"
#include "platform/host/kept.h"
#include "platform/host/library_file.h"
#include "platform/host/module_places.h"
#include "platform/host/path_rules.h"
#include "platform/host/system_path.h"

namespace {

// The names of load-point ids hang below this one.
constexpr UniIdT kLoadpointNamespace = {{0x1d, 0x92, 0x6e, 0x40, 0x35, 0xb8, 0x4f, 0x61, 0x8c, 0x07,
                                         0x29, 0xfa, 0xe3, 0x54, 0xbd, 0x18}};

std::string NarrowOf(const btkWChar* text) {
  return btkFSPath(text).NarrowText();
}

// The strings of an array that ends with a null pointer.
btkHostListT<const btkWChar*> Keep(Kept& kept, const btkWChar* const* list) {
  std::vector<const btkWChar*> texts;
  for (; list != nullptr && *list != nullptr; ++list)
    texts.push_back(kept.Text(*list));
  return kept.List(texts);
}

btkHostListT<const char*> Keep(Kept& kept, const std::vector<std::string>& list) {
  std::vector<const char*> texts;
  texts.reserve(list.size());
  for (const std::string& text : list)
    texts.push_back(kept.Text(text.c_str()));
  return kept.List(texts);
}

btkHostListT<btkHostEnvCmdT> Keep(Kept& kept, const EnvCmdT* commands, std::int32_t count) {
  std::vector<btkHostEnvCmdT> copies;
  for (std::int32_t i = 0; i < count; ++i) {
    const EnvCmdT& command = commands[i];
    copies.push_back({command.action, command.flags & ~static_cast<std::uint32_t>(kEnvCmdOwnsText),
                      kept.Text(command.name), kept.TextOrNull(command.value)});
  }
  return kept.List(copies);
}

// Loads a library; `failure` says why not.
void* Load(const char* path, std::string& failure) {
  if (SystemPath(path).is_absolute()) return LoadLibraryFile(path, failure);
  failure = "the path is not absolute";
  return nullptr;
}

}  // namespace

struct btkHostDlmManager::State {
  Kept kept;
  LoadpointPlaces loadpoints;
  std::vector<btkHostInstallationT> installations;
  std::vector<const btkWChar*> processLoadpoints;
  std::vector<btkHostLayoutT> layouts;
  std::vector<btkHostResolutionT> resolutions;
  std::vector<btkHostIntfRefT> interfaceRefs;
  std::vector<btkHostRunnableT> runnables;
  std::vector<btkHostPreloadT> preloads;
  btkHostPreloadModeT preloadMode = kBtkHostLoads;
};

btkHostDlmManager::btkHostDlmManager() : state_(new State) {}

btkHostDlmManager::~btkHostDlmManager() {
  delete state_;
}

btkHostListT<btkHostInstallationT> btkHostDlmManager::Installations() const {
  return ListOf(state_->installations);
}
btkHostListT<const btkWChar*> btkHostDlmManager::ProcessLoadpoints() const {
  return ListOf(state_->processLoadpoints);
}
btkHostListT<btkHostLayoutT> btkHostDlmManager::Layouts() const {
  return ListOf(state_->layouts);
}
btkHostListT<btkHostResolutionT> btkHostDlmManager::Resolutions() const {
  return ListOf(state_->resolutions);
}
btkHostListT<btkHostIntfRefT> btkHostDlmManager::InterfaceRefs() const {
  return ListOf(state_->interfaceRefs);
}
btkHostListT<btkHostRunnableT> btkHostDlmManager::Runnables() const {
  return ListOf(state_->runnables);
}
btkHostListT<btkHostPreloadT> btkHostDlmManager::Preloads() const {
  return ListOf(state_->preloads);
}

void btkHostDlmManager::SetPreloadMode(btkHostPreloadModeT mode) {
  state_->preloadMode = mode;
}

BtkErrorT btkHostDlmManager::QueryLoadpointId(UniIdT* id, const btkWChar* path) {
  *id = {};
  if (path == nullptr || *path == 0) return kBtkOk;
  // Paths that compare equal have one id.
  std::basic_string<btkWChar> name = path;
  if (name.size() > RootLength(name) && IsPathSeparator(name.back())) name.pop_back();
  std::transform(name.begin(), name.end(), name.begin(), FoldedInPath);
  return NamedId(*id, kLoadpointNamespace, NarrowOf(name.c_str()));
}

BtkErrorT btkHostDlmManager::RegisterInstallation(const btkWChar* base, const UniIdT* scope) {
  state_->loadpoints.AnnounceInstallation(NarrowOf(base));
  state_->installations.push_back({state_->kept.Text(base), *scope});
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::RegisterProcessLoadpoint(UniIdT* /*scope*/, const btkWChar* path) {
  state_->loadpoints.AnnounceProcess(NarrowOf(path));
  state_->processLoadpoints.push_back(state_->kept.Text(path));
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::RegisterLayout(const btkWChar* base, const char* machine,
                                            const btkWChar* text1, const btkWChar* text2,
                                            const btkWChar* const* list1,
                                            const btkWChar* const* list2,
                                            const btkWChar* const* list3, bool flag) {
  Kept& kept = state_->kept;
  state_->layouts.push_back({kept.Text(base),
                             kept.Text(machine),
                             kept.TextOrNull(text1),
                             kept.TextOrNull(text2),
                             {Keep(kept, list1), Keep(kept, list2), Keep(kept, list3)},
                             flag});
  return kBtkOk;
}

bool btkHostDlmManager::HasMachineVariant(const btkWChar* loadpoint, const char* machine) {
  if (loadpoint == nullptr || *loadpoint == 0) return false;
  const std::string root = state_->loadpoints.PlaceOf(NarrowOf(loadpoint));
  std::error_code error;
  return !root.empty() &&
         std::filesystem::is_directory(SystemPath(JoinPath({root, machine})), error);
}

BtkErrorT btkHostDlmManager::ResolveModule(btkZString* result, const char* id, const char* type,
                                           const btkWChar* name, const btkWChar* path,
                                           std::uint32_t flags, const btkWChar* loadpoint,
                                           const char* machine, std::int32_t /*abits*/,
                                           const btkModuleVersionT* /*version*/) {
  const ModulePlaces places =
      PlacesOf({type, name, path, flags, loadpoint, machine}, state_->loadpoints);
  std::vector<std::string> tried;
  bool isFound = false;
  for (const std::string& file : places.files) {
    tried.push_back(file);
    isFound = IsRegularFile(file.c_str());
    if (isFound) break;
  }
  if (isFound) *result = tried.back().c_str();
  Kept& kept = state_->kept;
  state_->resolutions.push_back({kept.Text(id), kept.Text(loadpoint), kept.Text(machine),
                                 kept.Text(isFound ? tried.back().c_str() : nullptr),
                                 Keep(kept, tried), places.refusal,
                                 kept.Text(places.reason.c_str())});
  return isFound ? kBtkOk : kBtkNotFound;
}

BtkErrorT btkHostDlmManager::PreloadModule(void** handle, const char* path,
                                           std::int32_t /*reserved1*/, std::int32_t /*reserved2*/,
                                           void* /*reserved3*/, void* /*reserved4*/) {
  Kept& kept = state_->kept;
  if (state_->preloadMode == kBtkHostRecordsOnly) {
    state_->preloads.push_back({kept.Text(path), false, ""});
    return kBtkOk;
  }
  std::string failure;
  void* const loaded = Load(path, failure);
  if (loaded != nullptr) *handle = loaded;
  state_->preloads.push_back({kept.Text(path), loaded != nullptr, kept.Text(failure.c_str())});
  return loaded != nullptr ? kBtkOk : kBtkNotFound;
}

BtkErrorT btkHostDlmManager::RegisterRunnable(btkZString* /*result*/, const char* name,
                                              const char* moduleref, const char* launcher,
                                              const btkWChar* loadpoint, std::int32_t /*reserved*/,
                                              const btkWChar* const* args, const EnvCmdT* env,
                                              std::int32_t envCount, std::int32_t initstate) {
  Kept& kept = state_->kept;
  state_->runnables.push_back({kept.Text(name), kept.Text(moduleref), kept.TextOrNull(launcher),
                               kept.Text(loadpoint), Keep(kept, args), Keep(kept, env, envCount),
                               initstate});
  return kBtkOk;
}

BtkErrorT btkHostDlmManager::PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                                            bool /*publish*/) {
  Kept& kept = state_->kept;
  for (std::uint64_t i = 0; i < count; ++i) {
    const IntfRefEntryT& entry = entries[i];
    state_->interfaceRefs.push_back({*entry.intfId, kept.Text(entry.module),
                                     kept.TextOrNull(entry.commonname),
                                     kept.TextOrNull(entry.displayname), entry.version,
                                     entry.shared, entry.multiplicityOrigin});
  }
  return kBtkOk;
}
