// What it costs to start a process with N manifest files, and to add the N-th installation. The
// managers agree to everything and keep nothing, so that the library alone is measured.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "platform/filesystem.h"
#include "platform/unique_id.h"
#include "repository/repo_base_impl.h"
#include "repository/scan.h"
#include "tests/support/generated_manifest.h"
#include "tests/support/quiet_managers.h"
#include "tests/support/temp_directory.h"

namespace {

using namespace tarnmf;

constexpr int kModules = 20;
constexpr int kClasses = 20;
constexpr int kServices = 10;

void Check(benchmark::State& state, BtkErrorT code) {
  if (code != kBtkOk) state.SkipWithError("the scan failed");
}

// N manifest files of one process.
struct ProcessFiles {
  explicit ProcessFiles(std::int64_t count) {
    for (int i = 0; i < count; ++i) {
      files.push_back(root.Write(std::to_string(i) + ".tmfx",
                                 test::GeneratedManifest(i, kModules, kClasses, kServices)));
      list.Append(btkFSEntry(files.back().c_str()));
    }
  }

  test::TempDirectory root;
  std::vector<std::string> files;
  btkFSList list;
  test::QuietManagers managers;
};

void BareXmlOfProcessFiles(benchmark::State& state) {
  const ProcessFiles process(state.range(0));
  xercesc::XMLPlatformUtils::Initialize();
  for (auto _ : state) {
    for (const std::string& file : process.files) {
      xercesc::XercesDOMParser parser;
      parser.parse(file.c_str());
      benchmark::DoNotOptimize(parser.getDocument()->getDocumentElement());
    }
  }
  xercesc::XMLPlatformUtils::Terminate();
}

// Discards the repository outside the measured time, as a process never does.
void StartOfProcess(benchmark::State& state) {
  const ProcessFiles process(state.range(0));
  for (auto _ : state) {
    RepositoryPtr repo(new liMfRepoBaseImpl);
    Check(state, ScanLoadpoint(*repo, nullptr, process.list));
    state.PauseTiming();
    repo.reset();
    state.ResumeTiming();
  }
}

// A repository with installations, each with a base, a layout and a scope of its own; every seventh
// has no scope.
class Installations {
 public:
  explicit Installations(std::int64_t count = 0) {
    for (std::int64_t i = 0; i < count; ++i) {
      if (repo_->AddLoadpoint(NewDirectory().c_str()) != kBtkOk) std::abort();
    }
  }

  std::u16string NewDirectory() {
    const std::string name = std::to_string(count_);
    const UniIdT scope = ScopeOf(count_);
    root_.Write(name + "/.installed",
                "base = \"lib\"\nlayout += 0 {\"a\" | | \"b\", \"c\"}\n" +
                    (btkUniIdIsNull(scope) ? "" : "scope = " + ScopeText(count_) + "\n"));
    root_.Write(name + "/a.tmfx", test::GeneratedManifest(count_++, kModules, kClasses, kServices));
    return btkFSPath((root_.Path() / name).c_str()).WideText();
  }
  liMfRepoBaseImpl& Repo() { return *repo_; }

  static UniIdT ScopeOf(int number) {
    return number % 7 == 0 ? kBtkNullUniId
                           : test::GeneratedId(test::kGeneratedOffer, 9999, number % 7);
  }

 private:
  static std::string ScopeText(int number) {
    return test::GeneratedIdText(test::kGeneratedOffer, 9999, number % 7);
  }

  test::TempDirectory root_;
  test::QuietManagers managers_;
  RepositoryPtr repo_{new liMfRepoBaseImpl};
  int count_ = 0;
};

void AddNthLoadpoint(benchmark::State& state) {
  Installations installations(state.range(0) - 1);
  for (auto _ : state) {
    state.PauseTiming();
    const std::u16string directory = installations.NewDirectory();
    state.ResumeTiming();
    Check(state, installations.Repo().AddLoadpoint(directory.c_str()));
  }
}

// For callers of every scope, the null scope and one that no installation has included.
void FindClassImplOfInstallations(benchmark::State& state) {
  Installations installations(state.range(0));
  std::vector<std::string> names;
  for (int i = 0; i < kClasses; ++i)
    names.push_back("Class" + std::to_string(i));
  std::vector<UniIdT> scopes = {test::GeneratedId(test::kGeneratedOffer, 9999, 8)};
  for (int i = 0; i < 7; ++i)
    scopes.push_back(Installations::ScopeOf(i));
  std::size_t next = 0;
  for (auto _ : state) {
    const char* const name = names[next % names.size()].c_str();
    const MfSvcResolveT* const found =
        installations.Repo().FindClassImpl(&scopes[next++ % scopes.size()], name, 0, 32767);
    if (found == nullptr) state.SkipWithError("a class is missing");
  }
}

// By combined id.
void FindServiceEntryOfInstallations(benchmark::State& state) {
  Installations installations(state.range(0));
  std::vector<MfSvcResolveT> entries(
      static_cast<std::size_t>(installations.Repo().GetServiceEntries(nullptr, 0)));
  installations.Repo().GetServiceEntries(entries.data(), static_cast<std::int32_t>(entries.size()));
  std::size_t next = 0;
  for (auto _ : state) {
    const MfSvcResolveT& entry = entries[next++ % entries.size()];
    const MfSvcResolveT* const found =
        installations.Repo().FindServiceEntry(&entry.ids[kMfCombinedId]);
    if (found == nullptr || found->record != entry.record) state.SkipWithError("another entry");
  }
}

void FindServiceOfInstallations(benchmark::State& state) {
  Installations installations(state.range(0));
  const MfLdpDataT& data =
      installations.Repo().loadpointsByPath[static_cast<std::int32_t>(state.range(0)) / 2]->data;
  const MfServiceRoleT* const last = data.runnables[0]->services[kServices - 1];
  for (auto _ : state) {
    if (installations.Repo().FindService(&last->id, data.loadpoint) != last)
      state.SkipWithError("another service");
  }
}

BENCHMARK(BareXmlOfProcessFiles)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(StartOfProcess)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(AddNthLoadpoint)
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->Iterations(50)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(FindClassImplOfInstallations)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(FindServiceEntryOfInstallations)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(FindServiceOfInstallations)->Arg(10)->Arg(100)->Arg(1000);

}  // namespace
