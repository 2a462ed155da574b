// What reading a manifest costs next to what the XML library alone takes for the same bytes. Both
// are measured in turns within one run and in processor time where there is a clock for it, so that
// a busy machine slows them alike.
//
// Counters: bytes of the document; bare_us, the mean time of the XML library; parse_us, that of
// Parse with the destruction of the records; ratio, the median of how the two stood to each other
// in one turn, which is to stay at or below 1.25.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "support/owned.h"
#include "tests/support/memory_stream.h"
#include "xml/xml_input_source.h"

namespace {

using namespace tarnmf;

[[maybe_unused]] const bool buildShown = [] {
#if defined(__OPTIMIZE__)
  benchmark::AddCustomContext("tarnmf_build", "optimised");
#else
  benchmark::AddCustomContext("tarnmf_build", "NOT OPTIMISED");
  std::fputs("*** Built without optimisation: these figures mean nothing. ***\n", stderr);
#endif
  return true;
}();

// One item of a document; every "#" in it becomes the item's number, in 8 digits.
struct Kind {
  const char* list;
  const char* item;
};

constexpr Kind kModules = {"modules", R"(
    <module id="component#" name="component#" path="lib" apilevel="2" abits="64">
      <preload by="executable" name="viewer"/>
      <preload svcid="#-0000-4000-8000-00000000000a" optionid="#-0000-4000-8000-00000000000b"/>
      <platformmodule machinetype="linux-x86" name="component#_32" path="lib32">
        <preload by="client" name="viewer"/>
      </platformmodule>
      <platformmodule machinetype="linux-arm64" path="libarm"/>
    </module>)"};

constexpr Kind kClasses = {"classes", R"(
    <class id="#-0000-4000-8000-000000000001" affinity="service" commonname="component.#"
           displayname="Component #" version="3" managedtype="generic">
      <clientside moduleref="component#"/>
      <serviceside svcid="#-0000-4000-8000-000000000002" multiplicity="perProcess"
                   xsid="#-0000-4000-8000-000000000003" exposed="yes">
        <module name="service#"/>
      </serviceside>
    </class>)"};

constexpr Kind kRunnables = {"runnables", R"(
    <runnable moduleref="component#">
      <service id="#-0000-4000-8000-000000000003" commonname="host.#" version="4" model="managed"
               multiplicity="perProcess" exposed="yes" port="80" launcher="std">
        <args><arg>--index # "two words"</arg><arg precomposed="yes">as it stands</arg></args>
        <env initstate="clean"><set name="INDEX">#</set><append name="PATH">/opt/#</append></env>
      </service>
      <app nameid="app#" launcher="std"><args><arg>--verbose</arg></args></app>
    </runnable>)"};

std::string Document(const Kind& kind, std::int64_t count) {
  const std::string list = kind.list;
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tarnmanifest version=\"1\">\n  <" + list + ">";
  for (std::int64_t number = 0; number < count; ++number) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08u", static_cast<unsigned>(number));
    for (const char* unit = kind.item; *unit != '\0'; ++unit) {
      if (*unit == '#') {
        text += digits;
      } else {
        text += *unit;
      }
    }
  }
  return text + "\n  </" + list + ">\n</tarnmanifest>\n";
}

double Now() {
#if defined(CLOCK_THREAD_CPUTIME_ID)
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
#else
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
#endif
}

template <class Work>
double Seconds(Work work) {
  const double start = Now();
  work();
  return Now() - start;
}

bool RunBareXml(btkIStream& stream) {
  btkXMLInputSource source(&stream);
  xercesc::XercesDOMParser parser;
  parser.parse(source);
  return parser.getDocument()->getDocumentElement() != nullptr;
}

bool RunParse(liMfStmParser& parser, btkIStream& stream, std::int64_t count) {
  MfLdpDataT data;
  return parser.Parse(&data, &stream) == kBtkOk &&
         std::max({data.modules.count, data.classes.count, data.runnables.count}) == count;
}

struct Turn {
  double bare;
  double parse;
};

// Both readers once. What ran last leaves its traces in the heap and in the caches, so the order
// changes from turn to turn; within a turn both find the traces of the same predecessor.
Turn RunTurn(const std::string& document, bool bareFirst, liMfStmParser& parser, std::int64_t count,
             bool& isRead) {
  Turn turn = {};
  for (const bool bare : {bareFirst, !bareFirst}) {
    test::MemoryStream stream(document);
    (bare ? turn.bare : turn.parse) = Seconds(
        [&] { isRead = (bare ? RunBareXml(stream) : RunParse(parser, stream, count)) && isRead; });
  }
  return turn;
}

double Mean(const std::vector<Turn>& turns, double Turn::*time) {
  double sum = 0;
  for (const Turn& turn : turns)
    sum += turn.*time;
  return sum / static_cast<double>(turns.size());
}

double MedianRatio(const std::vector<Turn>& turns) {
  std::vector<double> ratios;
  for (const Turn& turn : turns)
    ratios.push_back(turn.parse / turn.bare);
  const auto middle = ratios.begin() + static_cast<std::ptrdiff_t>(ratios.size() / 2);
  std::nth_element(ratios.begin(), middle, ratios.end());
  return *middle;
}

// The measured time is that of Parse.
void ParseAgainstBareXml(benchmark::State& state, const Kind& kind) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  const std::string document = Document(kind, state.range(0));
  bool isRead = true;
  bool bareFirst = true;
  for (int warm = 0; warm < 4; ++warm)
    RunTurn(document, bareFirst = !bareFirst, *parser, state.range(0), isRead);
  std::vector<Turn> turns;
  for (auto _ : state) {
    turns.push_back(RunTurn(document, bareFirst = !bareFirst, *parser, state.range(0), isRead));
    state.SetIterationTime(turns.back().parse);
  }
  if (!isRead) state.SkipWithError("the document was not read");
  state.counters["bytes"] = static_cast<double>(document.size());
  state.counters["bare_us"] = Mean(turns, &Turn::bare) * 1e6;
  state.counters["parse_us"] = Mean(turns, &Turn::parse) * 1e6;
  state.counters["ratio"] = MedianRatio(turns);
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(1)->Arg(100)->Arg(10'000)->UseManualTime()->Unit(benchmark::kMicrosecond);
}
BENCHMARK_CAPTURE(ParseAgainstBareXml, modules, kModules)->Apply(Sizes);
BENCHMARK_CAPTURE(ParseAgainstBareXml, classes, kClasses)->Apply(Sizes);
BENCHMARK_CAPTURE(ParseAgainstBareXml, runnables, kRunnables)->Apply(Sizes);

}  // namespace
