// The life of the repository: its entry points and its one instance.
#include "repository/repo_base_impl.h"
#include "repository/scan.h"

namespace tarnmf {

liMfRepoBaseImpl* g_repository = nullptr;

void DiscardRepository(liMfRepoBaseImpl* repo) {
  MfLdpEntryT* entry = repo->lastFiled;
  delete repo;
  while (entry != nullptr) {
    const std::unique_ptr<MfLdpEntryT> ending(entry);
    entry = ending->filedBefore;
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
  using tarnmf::g_repository;
  if (g_repository != nullptr) return kBtkMissing;
  tarnmf::RepositoryPtr repo(new (std::nothrow) tarnmf::liMfRepoBaseImpl);
  if (!repo) return kBtkNoMemory;
  if (BtkErrorT e = tarnmf::ScanLoadpoint(*repo, nullptr, files)) return e;
  g_repository = repo.release();
  return kBtkOk;
}

liMfRepository* liMfRepository::Instance() {
  return tarnmf::g_repository;
}
