// What publishing costs per record, with managers that answer at once.
//
// Add and Publish take the given number of modules and as many classes, in the order of the lists or
// in random order; per_record is the time for one of them and shows the growth.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <random>
#include <string>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/publisher.h"
#include "tarnmf/stream_parser.h"

#include "platform/runtime.h"
#include "support/owned.h"
#include "tests/support/generated_manifest.h"
#include "tests/support/memory_stream.h"
#include "tests/support/quiet_managers.h"
#include "xml/xml_input_source.h"

namespace {

using namespace tarnmf;
using test::MemoryStream;

// Modules and as many classes, each of which is implemented by one of them.
std::string Document(int count) {
  return test::GeneratedManifest(1, count, count, 10);
}

void Read(const std::string& document, MfLdpDataT& data) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  MemoryStream stream(document);
  if (parser->Parse(&data, &stream) != kBtkOk) std::abort();
}

DisposePtr<liMfPublisher> MakePublisher() {
  DisposePtr<liMfPublisher> publisher;
  if (liMfPublisher::CreateNew(Out(publisher), kIntfAgentView) != kBtkOk) std::abort();
  return publisher;
}

void Expect(BtkErrorT result) {
  if (result != kBtkOk) std::abort();
}

// ---- What is added -----------------------------------------------------------------------------

using Work = void (*)(const MfLdpDataT& data);

void AddAndPublish(const MfLdpDataT& data) {
  const DisposePtr<liMfPublisher> publisher = MakePublisher();
  Expect(publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                        data.modules.count, data.runnables.items, data.runnables.count));
  Expect(publisher->Publish(true));
}

void AddModules(const MfLdpDataT& data) {
  const DisposePtr<liMfPublisher> publisher = MakePublisher();
  Expect(publisher->Add(nullptr, 0, data.modules.items, data.modules.count, nullptr, 0));
}

// As AddModules; the rest of the time of Add is that of the classes.
void AddModulesAndClasses(const MfLdpDataT& data) {
  const DisposePtr<liMfPublisher> publisher = MakePublisher();
  Expect(publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                        data.modules.count, nullptr, 0));
}

// Ten modules with their classes at a time.
void AddInTens(const MfLdpDataT& data) {
  const DisposePtr<liMfPublisher> publisher = MakePublisher();
  for (int i = 0; i < data.modules.count; i += 10) {
    const int count = std::min(10, data.modules.count - i);
    Expect(
        publisher->Add(data.classes.items + i, count, data.modules.items + i, count, nullptr, 0));
  }
  Expect(publisher->Publish(true));
}

// ---- In which order ----------------------------------------------------------------------------

enum InsertionOrder { kSorted, kShuffled };

// Arranges modules and classes in the same way, so that each class stays beside its module.
void Arrange(MfLdpDataT& data, InsertionOrder order) {
  if (order == kShuffled) {
    std::shuffle(data.modules.begin(), data.modules.end(), std::mt19937(1));
    std::shuffle(data.classes.begin(), data.classes.end(), std::mt19937(1));
    return;
  }
  std::sort(data.modules.begin(), data.modules.end(),
            [](const MfModuleT* left, const MfModuleT* right) {
              return CmpCase_cStrings_Safe(&left->id, &right->id) < 0;
            });
  std::sort(data.classes.begin(), data.classes.end(),
            [](const MfIntfClassT* left, const MfIntfClassT* right) {
              return CmpCase_cStrings_Safe(&left->sides[kMfServiceSide].moduleref,
                                           &right->sides[kMfServiceSide].moduleref) < 0;
            });
}

void Publishing(benchmark::State& state, Work work, InsertionOrder order) {
  const test::QuietManagers managers;
  const auto count = static_cast<int>(state.range(0));
  const std::string document = Document(count);
  for (auto _ : state) {
    state.PauseTiming();
    {
      MfLdpDataT data;
      Read(document, data);
      Arrange(data, order);
      state.ResumeTiming();
      work(data);
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  state.counters["per_record"] = benchmark::Counter(
      2.0 * count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Sizes(benchmark::internal::Benchmark* bench) {
  for (int count : {1, 10, 100, 10000, 100000})
    bench->Arg(count);
  bench->Unit(benchmark::kMicrosecond);
}
BENCHMARK_CAPTURE(Publishing, sorted, AddAndPublish, kSorted)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, shuffled, AddAndPublish, kShuffled)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, modules_sorted, AddModules, kSorted)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, modules_shuffled, AddModules, kShuffled)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, classes_sorted, AddModulesAndClasses, kSorted)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, classes_shuffled, AddModulesAndClasses, kShuffled)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, tens_sorted, AddInTens, kSorted)->Apply(Sizes);
BENCHMARK_CAPTURE(Publishing, tens_shuffled, AddInTens, kShuffled)->Apply(Sizes);

constexpr int kRoadSize = 10000;

void BareXmlOfModulesAndClasses(benchmark::State& state) {
  const std::string document = Document(kRoadSize);
  for (auto _ : state) {
    MemoryStream stream(document);
    btkXMLInputSource source(&stream);
    xercesc::XercesDOMParser parser;
    parser.parse(source);
    benchmark::DoNotOptimize(parser.getDocument());
  }
}
BENCHMARK(BareXmlOfModulesAndClasses)->Unit(benchmark::kMillisecond);

// At most 1.5 times the bare XML library.
void ReadAddAndPublish(benchmark::State& state) {
  const test::QuietManagers managers;
  const std::string document = Document(kRoadSize);
  for (auto _ : state) {
    MfLdpDataT data;
    Read(document, data);
    AddAndPublish(data);
  }
}
BENCHMARK(ReadAddAndPublish)->Unit(benchmark::kMillisecond);

}  // namespace
