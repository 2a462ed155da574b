// SPDX-License-Identifier: Apache-2.0
// A program that is extended by libraries: plugin-host LOADPOINT INSTALLATION... asks the repository
// for the class "Filter", finds the module that implements its service side, lets the manager of
// libraries load the module's file and calls what it exports. It does so for a caller without a scope
// and for one of the first installation's scope, who gets that installation's filter unless a newer
// version is asked for.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>

#include "tarnmf/tarnmf.h"

#include "filter.h"
#include "library_symbol.h"
#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"

namespace {

int Fail(const char* step, BtkErrorT code) {
  std::fprintf(stderr, "%s: %s\n", step, tarnmf::DescribeError(code).sentence);
  return 1;
}

// Publishing has put the path of the module's file into the place of its id. Null: it has no file.
const MfModuleT* ModuleOfServiceSide(const MfSvcResolveT& entry) {
  const char* const file = entry.record->sides[kMfServiceSide].moduleref;
  const MfLdpDataT* const from =
      liMfRepository::Instance()->FindLoadpoint(&entry.ids[kMfLoadpointId]);
  for (const MfModuleT* module : from->modules) {
    const char* const resolved = module->selectedImpl->resolvedPath;
    if (resolved != nullptr && std::strcmp(resolved, file) == 0) return module;
  }
  return nullptr;
}

// The manager loads a library once, however often it is asked for it, and keeps it.
Filter* CreateFilterOf(const MfModuleT& module) {
  const char* const file = module.selectedImpl->resolvedPath;
  void* handle = nullptr;
  if (btkDlmManager::Instance()->PreloadModule(&handle, file, 0, 0, nullptr, nullptr) != kBtkOk)
    return nullptr;
  const auto create = reinterpret_cast<CreateFilterT>(LibrarySymbol(file, kCreateFilter));
  return create != nullptr ? create() : nullptr;
}

bool Show(const char* caller, const UniIdT* scope, std::int16_t version) {
  constexpr std::int16_t kNoLimit = std::numeric_limits<std::int16_t>::max();
  const MfSvcResolveT* const found =
      liMfRepository::Instance()->FindClassImpl(scope, "Filter", version, kNoLimit);
  const MfModuleT* const module = found != nullptr ? ModuleOfServiceSide(*found) : nullptr;
  const tarnmf::DisposePtr<Filter> filter(module != nullptr ? CreateFilterOf(*module) : nullptr);
  if (!filter) {
    std::fprintf(stderr, "%s: no filter\n", caller);
    return false;
  }
  std::printf("%s: %s, version %d: 100 becomes %d\n", caller, module->id, found->record->svcVersion,
              filter->Apply(100));
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: plugin-host LOADPOINT INSTALLATION...\n", stderr);
    return 2;
  }
  btkHostSetProcessLoadpoint(btkFSPath(argv[1]).WideText());
  if (BtkErrorT e = liMfRepository::Initialize(btkFSList(), nullptr)) return Fail("initialise", e);
  for (int i = 2; i < argc; ++i) {
    if (BtkErrorT e = liMfRepository::Instance()->AddLoadpoint(btkFSPath(argv[i]).WideText()))
      return Fail(argv[i], e);
  }

  const UniIdT scope = btkHostEmbeddedDlmManager().Installations()[0].scope;
  const bool all = Show("without a scope", nullptr, 0) && Show("in the scope", &scope, 0) &&
                   Show("in the scope, from version 2 on", &scope, 2);
  return all ? 0 : 1;
}
