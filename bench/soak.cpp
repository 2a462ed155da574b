// SPDX-License-Identifier: Apache-2.0
// Keeps the library at work for long and watches what it holds:
//   tarnmf_soak SECONDS [INSTALLATIONS]
// First threads meet where the library does something once. Then one repository is given many
// installations, 10,000 unless it is said. For the rest of the time threads read, publish and query
// at once, in rounds; what a round leaves allocated must not be more than what the first ones left.
// scripts/soak runs this with each sanitizer.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <malloc.h>
#include <mutex>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TARNMF_SANITIZED
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/publisher.h"
#include "tarnmf/repository.h"
#include "tarnmf/stream_parser.h"

#include "bench/documents.h"
#include "bench/quiet_managers.h"
#include "support/owned.h"
#include "tests/support/memory_stream.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::bench {
namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int kRounds = 12;
constexpr int kWarmUpRounds = 3;
// What the C library and the sanitizers keep may differ by this much from round to round.
constexpr std::int64_t kPlay = 2048;

void Require(bool held, const char* what) {
  if (!held) throw std::runtime_error(what);
}

std::int64_t AllocatedBytes() {
#if defined(TARNMF_SANITIZED)
  return static_cast<std::int64_t>(__sanitizer_get_current_allocated_bytes());
#else
  const auto info = mallinfo2();
  return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
#endif
}

void RunAtOnce(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  std::vector<std::exception_ptr> failures(count);
  for (std::size_t i = 0; i < count; ++i) {
    threads.emplace_back([&, i] {
      while (!go)
        std::this_thread::yield();
      try {
        work(i);
      } catch (...) {
        failures[i] = std::current_exception();
      }
    });
  }
  go = true;
  for (std::thread& thread : threads)
    thread.join();
  for (const std::exception_ptr& failure : failures) {
    if (failure) std::rethrow_exception(failure);
  }
}

BtkErrorT ParseText(liMfStmParser& parser, const std::string& text, MfLdpDataT& data) {
  test::MemoryStream stream(text);
  return parser.Parse(&data, &stream);
}

// ---- Beginning ---------------------------------------------------------------------------------

// The threads meet in the factories' one-time step; modules without an id get a fresh one, whichever
// thread reads them.
void MakeTheFirstParsers() {
  constexpr std::size_t kThreads = 6;
  constexpr int kIds = 50;
  std::mutex mutex;
  std::set<std::string> ids;
  RunAtOnce(kThreads, [&](std::size_t) {
    const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
    const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    Require(parser && loader, "a parser and a loader are made");
    for (int i = 0; i < kIds; ++i) {
      MfLdpDataT data;
      const char* const text =
          "<tarnclassmanifest version=\"1\"><class id=\"00000001-0000-4000-8000-000000000001\">"
          "<clientside multiplicity=\"perLdp\"><module name=\"n\"/></clientside></class>"
          "</tarnclassmanifest>";
      Require(ParseText(*parser, text, data) == kBtkOk, "a nested module is read");
      const std::lock_guard lock(mutex);
      ids.insert(data.modules[0]->id);
    }
  });
  Require(ids.size() == kThreads * kIds, "fresh ids differ");
}

// ---- Installations -----------------------------------------------------------------------------

std::string ClassName(std::int64_t number) {
  char name[32];
  std::snprintf(name, sizeof name, "component.%08lld", static_cast<long long>(number));
  return name;
}

// The load point of an installation is the base that its layout file names, so that one directory
// serves for all.
void AddInstallations(liMfRepository& repository, const test::TempDirectory& root,
                      std::int64_t count) {
  const btkFSPath directory(root.At("installation").c_str());
  for (std::int64_t i = 0; i < count; ++i) {
    const std::string base = "base = \"lib" + std::to_string(i) + "\"\n";
    root.Write("installation/.installed", base + "layout += 64 {\"a\" | \"b\" | \"c\"}\n");
    root.Write("installation/a.tmfx", ManifestDocument({1, 1, 1}, i));
    Require(repository.AddLoadpoint(directory.WideText()) == kBtkOk, "an installation is added");
    Require(repository.GetLoadpointIds(nullptr, 0) == i + 2, "it is counted beside the process");
  }
}

// ---- Work --------------------------------------------------------------------------------------

// One thread's work, again and again until the time is over; counts what it has done.
struct Worker {
  const char* name;
  std::function<void(std::mt19937&)> work;
  std::int64_t done = 0;
};

class Work {
 public:
  // The repository has so many installations.
  Work(liMfRepository& repository, std::int64_t installations, const test::TempDirectory& root)
      : repository_(repository), installations_(installations) {
    files_.Append(btkFSEntry(root.Write("whole.tmfx", whole_).c_str()));
    files_.Append(btkFSEntry(root.Write("more.tmfx", ManifestDocument({5, 5, 5}, 1000)).c_str()));
  }

  void Parse(std::mt19937& random) const {
    MfLdpDataT data;
    Require(ParseText(*parser_, whole_, data) == kBtkOk && data.modules.count == 40, "a parse");
    const std::string broken = whole_.substr(0, random() % whole_.size()) + "<x/>";
    const BtkErrorT code = ParseText(*parser_, broken, data);
    Require(code == kBtkOk || data.modules.items == nullptr, "a failed parse keeps nothing");
  }

  void Load(std::mt19937& /*random*/) const {
    MfLdpDataT data;
    Require(loader_->Load(&data, BTK_W("/here"), files_) == kBtkOk, "a load");
    Require(data.modules.count == 45 && data.classes.count == 45, "both files are read");
  }

  void Publish(std::mt19937& random) const {
    MfLdpDataT data;
    Require(ParseText(*parser_, whole_, data) == kBtkOk, "a parse before a publish");
    DisposePtr<liMfPublisher> publisher;
    const auto view = random() % 2 == 0 ? kIntfAgentView : kIntfClientView;
    Require(liMfPublisher::CreateNew(Out(publisher), view) == kBtkOk, "a publisher");
    const auto add = [&] {
      return publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                            data.modules.count, data.runnables.items, data.runnables.count);
    };
    Require(add() == kBtkOk && publisher->Publish(true) == kBtkOk, "a publish");
    Require(add() == kBtkUnexpected, "the same again is refused");
  }

  void Query(std::mt19937& random) const {
    const auto number =
        static_cast<std::int64_t>(random() % static_cast<std::uint64_t>(2 * installations_));
    const std::string name = ClassName(number);
    const MfSvcResolveT* const found = repository_.FindClassImpl(nullptr, name.c_str(), 0, 32767);
    Require((found != nullptr) == (number < installations_), "a class is found if it was added");
    if (found == nullptr) return;
    Require(name == found->record->commonname, "it is the one that was asked for");
    const MfLdpDataT* const data = repository_.FindLoadpoint(&found->ids[kMfLoadpointId]);
    Require(data != nullptr && data->classes[0] == found->record, "so is its load point");
    const MfServiceRoleT* const role = data->runnables[0]->services[0];
    Require(repository_.FindService(&role->id, data->loadpoint) == role, "and its service");
    if (random() % 1000 != 0) return;
    std::vector<MfSvcResolveT> all(2 * static_cast<std::size_t>(installations_));
    const auto count = static_cast<std::int32_t>(all.size());
    Require(repository_.GetServiceEntries(all.data(), count) == count, "all services are listed");
    Require(repository_.FindServiceEntry(&all[random() % all.size()].ids[kMfCombinedId]) != nullptr,
            "each by its id");
  }

 private:
  liMfRepository& repository_;
  const std::int64_t installations_;
  const std::string whole_ = ManifestDocument({40, 40, 40}, 0, Detail::kFull, Order::kRandom);
  const DisposePtr<liMfStmParser> parser_{liMfStmParser::CreateNew(nullptr)};
  const DisposePtr<liLdpMfLoader> loader_{liLdpMfLoader::CreateNew(nullptr)};
  btkFSList files_;
};

void RunRound(std::vector<Worker>& workers, int round, Clock::time_point end) {
  RunAtOnce(workers.size(), [&](std::size_t i) {
    std::mt19937 random(static_cast<unsigned>(round * 100) + static_cast<unsigned>(i));
    do {
      workers[i].work(random);
      ++workers[i].done;
    } while (Clock::now() < end);
  });
}

void RunRounds(const Work& work, Clock::time_point end) {
  const QuietManagers managers;
  const struct {
    const char* name;
    void (Work::*step)(std::mt19937&) const;
  } kinds[] = {{"parses", &Work::Parse},
               {"loads", &Work::Load},
               {"publishes", &Work::Publish},
               {"queries", &Work::Query}};
  std::vector<Worker> workers(2 * std::size(kinds));
  for (std::size_t i = 0; i < workers.size(); ++i) {
    const auto& kind = kinds[i / 2];
    workers[i].name = kind.name;
    workers[i].work = [&work, step = kind.step](std::mt19937& random) { (work.*step)(random); };
  }
  std::int64_t warm = 0;
  const auto length = (end - Clock::now()) / kRounds;
  for (int round = 0; round < kRounds; ++round) {
    RunRound(workers, round, Clock::now() + length);
    const std::int64_t bytes = AllocatedBytes();
    if (round < kWarmUpRounds) warm = std::max(warm, bytes);
    std::printf("round %d: %lld bytes\n", round, static_cast<long long>(bytes));
    Require(bytes <= warm + kPlay, "memory does not grow");
  }
  for (const Worker& worker : workers)
    std::printf("%s: %lld\n", worker.name, static_cast<long long>(worker.done));
}

void Soak(double seconds, std::int64_t installations) {
  const auto start = Clock::now();
  MakeTheFirstParsers();
  const test::TempDirectory root;
  Require(liMfRepository::Initialize(btkFSList(0), nullptr) == kBtkOk, "the repository is made");
  liMfRepository& repository = *liMfRepository::Instance();
  AddInstallations(repository, root, installations);
  const Seconds added = Clock::now() - start;
  std::printf("%lld installations in %.1f s\n", static_cast<long long>(installations),
              added.count());
  const Seconds rest(std::max(seconds - added.count(), seconds / 4));
  RunRounds(Work(repository, installations, root),
            Clock::now() + std::chrono::duration_cast<Clock::duration>(rest));
}

}  // namespace
}  // namespace tarnmf::bench

int main(int argc, char** argv) try {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 0;
  const long long installations = argc > 2 ? std::atoll(argv[2]) : 10000;
  if (argc > 3 || seconds <= 0 || installations <= 0) {
    throw std::invalid_argument("tarnmf_soak SECONDS [INSTALLATIONS]");
  }
  tarnmf::bench::Soak(seconds, installations);
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::fprintf(stderr, "not so: %s\n", error.what());
  return EXIT_FAILURE;
}
