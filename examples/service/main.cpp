// SPDX-License-Identifier: Apache-2.0
// A program that is a service: service LOADPOINT [ID] announces its process as one inside the service
// ID before its load point is read, so that the libraries for that service are loaded ahead of use.
// It shows which ones are, and what the repository knows of the service. Without an ID the process is
// in no service.
#include <cstdio>
#include <cstring>
#include <optional>

#include "tarnmf/tarnmf.h"

#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"

namespace {

class Session final : public btkSvcSession {
 public:
  explicit Session(const UniIdT& id) : id_(id) {}
  UniIdT GetServiceId() override { return id_; }

 private:
  UniIdT id_;
};

int Fail(const char* step, BtkErrorT code) {
  std::fprintf(stderr, "%s: %s\n", step, tarnmf::DescribeError(code).sentence);
  return 1;
}

void ShowPreloaded(const MfLdpDataT& data) {
  for (const btkHostPreloadT& preload : btkHostEmbeddedDlmManager().Preloads()) {
    for (const MfModuleT* module : data.modules) {
      const char* const file = module->selectedImpl->resolvedPath;
      if (file != nullptr && std::strcmp(file, preload.path) == 0)
        std::printf("%s: %s\n", module->id, preload.isLoaded ? "preloaded" : preload.failure);
    }
  }
}

BtkErrorT ShowService(const UniIdT& id, const UniIdT& loadpointId, const btkWChar* loadpoint) {
  liMfRepository* const repository = liMfRepository::Instance();
  const MfServiceRoleT* const role = repository->FindService(&id, loadpoint);
  if (role == nullptr) return kBtkNotFound;
  std::printf("%s, version %d, started with", role->commonname, static_cast<int>(role->version));
  for (const btkWChar* argument : role->args)
    std::printf(" %s", btkFSPath(argument).NarrowText());

  // Exposed services are filed under the combination of load point and service.
  UniIdT combined;
  if (BtkErrorT e = btkUniIdCombine(&combined, &loadpointId, &id)) return e;
  const MfSvcResolveT* const entry = repository->FindServiceEntry(&combined);
  std::printf("; %s\n", entry != nullptr ? "exposed" : "not exposed");
  return kBtkOk;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 && argc != 3) {
    std::fputs("usage: service LOADPOINT [ID]\n", stderr);
    return 2;
  }
  const btkFSPath loadpoint(argv[1]);
  btkHostSetProcessLoadpoint(loadpoint.WideText());

  // Preload conditions ask for the session while the load point is read.
  std::optional<Session> session;
  if (argc == 3) {
    UniIdT id;
    if (BtkErrorT e = btkUniIdParse(&id, argv[2], kBtkWholeText, nullptr, kBtkUniIdDashed))
      return Fail(argv[2], e);
    btkHostSetServiceSession(&session.emplace(id));
  }
  const btkFSList manifests(btkFSEntry(argv[1]), "*.tmfx");
  if (BtkErrorT e = liMfRepository::Initialize(manifests, nullptr)) return Fail("initialise", e);

  UniIdT loadpointId = {};
  liMfRepository::Instance()->GetLoadpointIds(&loadpointId, 1);
  ShowPreloaded(*liMfRepository::Instance()->FindLoadpoint(&loadpointId));
  if (btkSvcSession* const current = btkSvcSession::Current()) {
    if (BtkErrorT e = ShowService(current->GetServiceId(), loadpointId, loadpoint.WideText()))
      return Fail("find the service", e);
  } else {
    std::puts("in no service");
  }
}
