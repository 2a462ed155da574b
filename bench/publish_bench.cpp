// What publishing costs per record, with managers that answer at once.
//
// Add and Publish take the given number of modules and as many classes; per_record is the time for
// one of them and shows the growth. Records in sorted order are appended to the sorted lists;
// shuffled ones move the tails of these lists, which grows with their length.
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

BtkErrorT AddAndPublish(const MfLdpDataT& data) {
  DisposePtr<liMfPublisher> publisher;
  if (BtkErrorT e = liMfPublisher::CreateNew(Out(publisher), kIntfAgentView)) return e;
  if (BtkErrorT e =
          publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                         data.modules.count, data.runnables.items, data.runnables.count)) {
    return e;
  }
  return publisher->Publish(true);
}

enum InsertionOrder { kSorted, kShuffled };

void Arrange(MfLdpDataT& data, InsertionOrder order) {
  if (order == kShuffled) {
    std::mt19937 random(1);
    std::shuffle(data.modules.begin(), data.modules.end(), random);
    std::shuffle(data.classes.begin(), data.classes.end(), random);
    return;
  }
  std::sort(data.modules.begin(), data.modules.end(),
            [](const MfModuleT* left, const MfModuleT* right) {
              return CmpCase_cStrings_Safe(&left->id, &right->id) < 0;
            });
}

void AddAndPublishRecords(benchmark::State& state, InsertionOrder order) {
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
      if (AddAndPublish(data) != kBtkOk) std::abort();
      state.PauseTiming();
    }
    state.ResumeTiming();
  }
  state.counters["per_record"] = benchmark::Counter(
      2.0 * count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(AddAndPublishRecords, sorted, kSorted)
    ->Arg(100)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(AddAndPublishRecords, shuffled, kShuffled)
    ->Arg(100)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);

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
    if (AddAndPublish(data) != kBtkOk) std::abort();
  }
}
BENCHMARK(ReadAddAndPublish)->Unit(benchmark::kMillisecond);

}  // namespace
