// SPDX-License-Identifier: Apache-2.0
// Embeds the manifest service: embed LOADPOINT INSTALLATION CLASS prints which implementation of a
// class serves a caller without a scope, and which one serves a caller of the installation's scope.
// The manifests of the process itself are those in LOADPOINT.
#include <cstdint>
#include <cstdio>
#include <limits>

#include "tarnmf/tarnmf.h"

#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"

namespace {

constexpr std::int16_t kAnyVersion = 0;
constexpr std::int16_t kNoLimit = std::numeric_limits<std::int16_t>::max();

int Fail(const char* step, BtkErrorT code) {
  std::fprintf(stderr, "%s: code %d\n", step, static_cast<int>(code));
  return 1;
}

void Print(const char* caller, const MfSvcResolveT* found) {
  if (found == nullptr) {
    std::printf("%s: none\n", caller);
    return;
  }
  const MfLdpDataT* const from =
      liMfRepository::Instance()->FindLoadpoint(&found->ids[kMfLoadpointId]);
  std::printf("%s: version %d from %s\n", caller, found->record->svcVersion,
              btkFSPath(from->loadpoint).NarrowText());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fputs("usage: embed LOADPOINT INSTALLATION CLASS\n", stderr);
    return 2;
  }
  const btkFSPath loadpoint(argv[1]);
  const btkFSPath installation(argv[2]);
  btkHostSetProcessLoadpoint(loadpoint.WideText());

  // Switches come before the scan, whose preload conditions ask for them.
  UniIdT diagnostics;
  const char* const diagnosticsId = "7b1f64c0-52a8-4be1-9d3e-3a0c6f2d0a01";
  if (BtkErrorT e =
          btkUniIdParse(&diagnostics, diagnosticsId, kBtkWholeText, nullptr, kBtkUniIdDashed))
    return Fail("option", e);
  btkConfEnableOption(&diagnostics, 1);

  const btkFSList manifests(btkFSEntry(argv[1]), "*.tmfx");
  if (BtkErrorT e = liMfRepository::Initialize(manifests, nullptr)) return Fail("initialise", e);
  liMfRepository* const repository = liMfRepository::Instance();
  if (BtkErrorT e = repository->AddLoadpoint(installation.WideText()))
    return Fail("add the installation", e);

  const UniIdT scope = btkHostEmbeddedDlmManager().Installations().back().scope;
  std::printf("%d load points\n", static_cast<int>(repository->GetLoadpointIds(nullptr, 0)));
  Print("no scope", repository->FindClassImpl(nullptr, argv[3], kAnyVersion, kNoLimit));
  Print("its scope", repository->FindClassImpl(&scope, argv[3], kAnyVersion, kNoLimit));
}
