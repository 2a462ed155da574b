// SPDX-License-Identifier: Apache-2.0
#include "repository/scan.h"

#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/publisher.h"

#include "platform/memory.h"
#include "platform/runtime.h"
#include "repository/indexes.h"
#include "repository/layout_file.h"
#include "support/ignore_refusal.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

constexpr std::size_t kPathUnits = 261;

// What is known of a load point before its manifests are read.
struct FoundLoadpoint {
  UniIdT scope{};
  WideText path;  // null: the process has no load point
  btkFSList manifests{0};
};

// ---- Installations -----------------------------------------------------------------------------

// Address bits as layout files write them: one build, or the two builds that one library serves.
enum LayoutBits : std::int32_t { kBits32 = 32, kBits64 = 64, kBits3264 = 3264, kBits6432 = 6432 };

// What the platform calls its builds; passed on as it is.
struct MachineTypes {
  const char* native = btkGetVexMachine();
  const char* other = btkGetVexMachine3264("");  // the 32-bit one

  // The machine type that a layout is for, if it is for one of this platform's.
  std::optional<const char*> OfLayout(std::int32_t bits, std::int32_t fileBits) const {
    switch (bits) {
      case kBits32:
      case kBits3264:
        return other;
      case kBits64:
        return native;
      case kBits6432:
        return fileBits == kBits32 ? std::optional(native) : std::nullopt;
      default:
        return std::nullopt;
    }
  }
};

void RegisterLayouts(btkDlmManager& dlm, const LayoutFile& layout) {
  const MachineTypes machines;
  const std::int32_t fileBits = layout.bits != 0 ? layout.bits : kBits64;
  for (MfLayoutEntryT* entry : layout.entries) {
    if (entry->bits == 0) entry->bits = fileBits;
    const std::optional<const char*> machine = machines.OfLayout(entry->bits, fileBits);
    if (!machine) continue;
    // A layout that the manager refuses does not keep the installation out.
    IgnoreRefusal(dlm.RegisterLayout(layout.base.get(), *machine, entry->text1, entry->text2,
                                     entry->list1, entry->list2, entry->list3, entry->flag));
  }
}

// The path of the load point is the base that the layout file names; the manifests lie in `dir`.
BtkErrorT FindInstallation(const liMfRepoBaseImpl& repo, btkDlmManager& dlm, const btkWChar* dir,
                           FoundLoadpoint& found) {
  LayoutFile layout;
  if (BtkErrorT e = ReadLayoutFile(dir, layout)) return e;
  if (HasLoadpoint(repo, layout.base.get())) return kBtkDuplicate;
  RegisterLayouts(dlm, layout);
  found.scope = layout.scope;
  if (BtkErrorT e = dlm.RegisterInstallation(layout.base.get(), &found.scope)) return e;
  found.manifests = btkFSList(btkFSEntry(dir), "*.tmfx");
  found.path = std::move(layout.base);
  return kBtkOk;
}

// ---- The process's own load point --------------------------------------------------------------

BtkErrorT FindProcessLoadpoint(btkDlmManager& dlm, const btkFSList& files, FoundLoadpoint& found) {
  btkWChar path[kPathUnits] = {};
  const std::size_t length = btkGetLoadpointW(path, kPathUnits);
  if (length != 0 && length != static_cast<std::size_t>(-1)) {
    found.path.reset(btk_wcsdup(path));
    if (!found.path) return kBtkNoMemory;
  }
  if (BtkErrorT e = dlm.RegisterProcessLoadpoint(&found.scope, found.path.get())) return e;
  found.manifests = files;
  return kBtkOk;
}

// ---- Both --------------------------------------------------------------------------------------

BtkErrorT LoadManifests(liLdpMfLoader& loader, FoundLoadpoint& found, MfLdpDataT& data) {
  data.loadpoint = found.path ? found.path.release() : btk_wcsdup(BTK_W(""));
  if (data.loadpoint == nullptr) return kBtkNoMemory;
  return loader.Load(&data, data.loadpoint, found.manifests);
}

BtkErrorT MakePublisher(const MfLdpDataT& data, DisposePtr<liMfPublisher>& publisher) {
  if (BtkErrorT e = liMfPublisher::CreateNew(Out(publisher), kIntfAgentView)) return e;
  return publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                        data.modules.count, data.runnables.items, data.runnables.count);
}

// Reads and checks the manifests, files the load point and publishes it. A failure before it is
// filed leaves the repository as it was.
BtkErrorT FileAndPublish(liMfRepoBaseImpl& repo, btkDlmManager& dlm, FoundLoadpoint& found,
                         MfLdpEntryT*& filed) {
  UniIdT id{};
  // A manager that knows no id leaves the null id.
  IgnoreRefusal(dlm.QueryLoadpointId(&id, found.path.get()));
  const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
  std::unique_ptr<MfLdpEntryT> entry(new (std::nothrow) MfLdpEntryT(id));
  if (!loader || !entry) return kBtkNoMemory;
  if (BtkErrorT e = LoadManifests(*loader, found, entry->data)) return e;

  if (BtkErrorT e = MakePublisher(entry->data, entry->publisher)) return e;
  if (!ReserveLoadpoint(repo)) return kBtkNoMemory;
  filed = &FileLoadpoint(repo, std::move(entry));
  return filed->publisher->Publish(true);
}

BtkErrorT Index(liMfRepoBaseImpl& repo, MfLdpEntryT& entry, const UniIdT& scope) {
  return IndexLoadpoint(repo, entry, scope) ? kBtkOk : kBtkNoMemory;
}

BtkErrorT ScanInstallation(liMfRepoBaseImpl& repo, btkDlmManager& dlm, const btkWChar* dir) {
  FoundLoadpoint found;
  MfLdpEntryT* entry = nullptr;
  if (BtkErrorT e = FindInstallation(repo, dlm, dir, found)) return e;
  if (BtkErrorT e = FileAndPublish(repo, dlm, found, entry)) return e;
  return Index(repo, *entry, found.scope);
}

BtkErrorT ScanProcess(liMfRepoBaseImpl& repo, btkDlmManager& dlm, const btkFSList& files) {
  FoundLoadpoint found;
  MfLdpEntryT* entry = nullptr;
  if (BtkErrorT e = FindProcessLoadpoint(dlm, files, found)) return e;
  if (BtkErrorT e = FileAndPublish(repo, dlm, found, entry)) return e;
  if (BtkErrorT e = PreloadModules(dlm, entry->data)) return e;
  return Index(repo, *entry, found.scope);
}

}  // namespace

BtkErrorT ScanLoadpoint(liMfRepoBaseImpl& repo, const btkWChar* dir, const btkFSList& files) {
  btkDlmManager* const dlm = btkDlmManager::Instance();
  if (dlm == nullptr) return kBtkNotReady;
  const bool isProcess = dir == nullptr || *dir == 0;
  return isProcess ? ScanProcess(repo, *dlm, files) : ScanInstallation(repo, *dlm, dir);
}

}  // namespace tarnmf
