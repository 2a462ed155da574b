#include "repository/scan.h"

#include <memory>
#include <new>
#include <utility>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/publisher.h"

#include "platform/dlm.h"
#include "platform/memory.h"
#include "platform/runtime.h"
#include "repository/indexes.h"
#include "repository/indexing_pass.h"
#include "repository/layout_file.h"
#include "repository/preload_pass.h"
#include "support/ignore_refusal.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

constexpr std::size_t kPathUnits = 261;

// What is known of a load point before its manifests are read.
struct FoundLoadpoint {
  btkDlmManager& dlm;
  UniIdT scope{};
  WideText path = nullptr;  // null: the process has no load point
  btkFSList manifests{0};
};

// ---- Installations -----------------------------------------------------------------------------

// Address bits as layout files write them: one build, or the two builds that one library serves.
enum LayoutBits : std::int32_t { kBits32 = 32, kBits64 = 64, kBits3264 = 3264, kBits6432 = 6432 };

// The machine type that a layout is for; null when it is for none of this platform's.
const char* LayoutMachine(std::int32_t bits, std::int32_t fileBits) {
  switch (bits) {
    case kBits32:
    case kBits3264:
      return btkGetVexMachine3264("");
    case kBits64:
      return btkGetVexMachine();
    case kBits6432:
      return fileBits == kBits32 ? btkGetVexMachine() : nullptr;
    default:
      return nullptr;
  }
}

// A layout that the manager refuses does not keep the installation out.
void RegisterLayouts(btkDlmManager& dlm, const LayoutFile& layout) {
  const std::int32_t fileBits = layout.bits != 0 ? layout.bits : kBits64;
  for (MfLayoutEntryT* entry : layout.entries) {
    if (entry->bits == 0) entry->bits = fileBits;
    const char* const machine = LayoutMachine(entry->bits, fileBits);
    if (machine == nullptr) continue;
    IgnoreRefusal(dlm.RegisterLayout(layout.base.get(), machine, entry->text1, entry->text2,
                                     entry->list1, entry->list2, entry->list3, entry->flag));
  }
}

// The path of the load point is the base that the layout file names; the manifests lie in `dir`.
BtkErrorT FindInstallation(const liMfRepoBaseImpl& repo, const btkWChar* dir,
                           FoundLoadpoint& found) {
  LayoutFile layout;
  if (BtkErrorT e = ReadLayoutFile(dir, layout)) return e;
  if (FindByPath(repo.loadpointsByPath, layout.base.get()).found) return kBtkDuplicate;
  RegisterLayouts(found.dlm, layout);
  found.scope = layout.scope;
  if (BtkErrorT e = found.dlm.RegisterInstallation(layout.base.get(), &found.scope)) return e;
  found.manifests = btkFSList(btkFSEntry(dir), "*.tmfx");
  found.path = std::move(layout.base);
  return kBtkOk;
}

// ---- The process's own load point --------------------------------------------------------------

BtkErrorT FindProcessLoadpoint(const btkFSList& files, FoundLoadpoint& found) {
  btkWChar path[kPathUnits] = {};
  const std::size_t length = btkGetLoadpointW(path, kPathUnits);
  if (length != 0 && length != static_cast<std::size_t>(-1)) {
    found.path.reset(btk_wcsdup(path));
    if (!found.path) return kBtkNoMemory;
  }
  if (BtkErrorT e = found.dlm.RegisterProcessLoadpoint(&found.scope, found.path.get())) return e;
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
BtkErrorT FileAndPublish(liMfRepoBaseImpl& repo, FoundLoadpoint& found, MfLdpEntryT*& filed) {
  UniIdT id{};
  // A manager that knows no id leaves the null id.
  IgnoreRefusal(found.dlm.QueryLoadpointId(&id, found.path.get()));
  const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
  std::unique_ptr<MfLdpEntryT> entry(new (std::nothrow) MfLdpEntryT(id));
  if (!loader || !entry) return kBtkNoMemory;
  if (BtkErrorT e = LoadManifests(*loader, found, entry->data)) return e;

  // Declared behind the entry: it points into the entry's records, so it has to end first.
  DisposePtr<liMfPublisher> publisher;
  if (BtkErrorT e = MakePublisher(entry->data, publisher)) return e;
  if (!ReserveLoadpoint(repo)) return kBtkNoMemory;
  filed = entry.release();
  FileLoadpoint(repo, filed);
  filed->publisher = std::move(publisher);
  return filed->publisher->Publish(true);
}

BtkErrorT Index(liMfRepoBaseImpl& repo, MfLdpEntryT& entry, const UniIdT& scope) {
  return IndexLoadpoint(repo, entry, scope) ? kBtkOk : kBtkNoMemory;
}

BtkErrorT ScanInstallation(liMfRepoBaseImpl& repo, const btkWChar* dir, FoundLoadpoint& found) {
  MfLdpEntryT* entry = nullptr;
  if (BtkErrorT e = FindInstallation(repo, dir, found)) return e;
  if (BtkErrorT e = FileAndPublish(repo, found, entry)) return e;
  return Index(repo, *entry, found.scope);
}

BtkErrorT ScanProcess(liMfRepoBaseImpl& repo, const btkFSList& files, FoundLoadpoint& found) {
  MfLdpEntryT* entry = nullptr;
  if (BtkErrorT e = FindProcessLoadpoint(files, found)) return e;
  if (BtkErrorT e = FileAndPublish(repo, found, entry)) return e;
  if (BtkErrorT e = PreloadModules(found.dlm, entry->data)) return e;
  return Index(repo, *entry, found.scope);
}

}  // namespace

BtkErrorT ScanLoadpoint(liMfRepoBaseImpl& repo, const btkWChar* dir, const btkFSList& files) {
  btkDlmManager* const dlm = btkDlmManager::Instance();
  if (dlm == nullptr) return kBtkNotReady;
  FoundLoadpoint found{*dlm};
  if (dir == nullptr || *dir == 0) return ScanProcess(repo, files, found);
  return ScanInstallation(repo, dir, found);
}

}  // namespace tarnmf
