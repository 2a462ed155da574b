// SPDX-License-Identifier: Apache-2.0
// The life of the repository: its entry points and its one instance.
#include <new>

#include "repository/repo_base_impl.h"
#include "repository/scan.h"

namespace tarnmf {

liMfRepoBaseImpl* g_repository = nullptr;

namespace {

// Initialize is running. What the scan calls may ask for a repository as well: a manager, or the
// start-up code of a library that is preloaded.
bool g_isInitializing = false;

struct Initializing {
  Initializing() { g_isInitializing = true; }
  Initializing(const Initializing&) = delete;
  Initializing& operator=(const Initializing&) = delete;
  ~Initializing() { g_isInitializing = false; }
};

}  // namespace

void DiscardRepository(liMfRepoBaseImpl* repo) {
  MfLdpEntryT* entry = repo->lastFiled;
  delete repo;
  while (entry != nullptr) {
    const std::unique_ptr<MfLdpEntryT> discarded(entry);
    entry = discarded->filedBefore;
  }
}

BtkErrorT liMfRepoBaseImpl::AddLoadpoint(const btkWChar* dir) {
  // An empty directory would stand for the process's own load point, which is filed already.
  if (dir == nullptr || *dir == 0) return kBtkNullArgument;
  return ScanLoadpoint(*this, dir, btkFSList(0));
}

}  // namespace tarnmf

liMfRepository::~liMfRepository() = default;

BtkErrorT liMfRepository::Initialize(const btkFSList& files, const btkWChar* /*dir*/) {
  using namespace tarnmf;
  if (g_repository != nullptr || g_isInitializing) return kBtkMissing;
  const Initializing initializing;
  RepositoryPtr repo(new (std::nothrow) liMfRepoBaseImpl);
  if (!repo) return kBtkNoMemory;
  if (BtkErrorT e = ScanLoadpoint(*repo, nullptr, files)) return e;
  g_repository = repo.release();
  return kBtkOk;
}

liMfRepository* liMfRepository::Instance() {
  return tarnmf::g_repository;
}
