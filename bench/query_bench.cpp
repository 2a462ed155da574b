// The repository's queries on N entries, each next to a std::map with the same keys.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/unique_id.h"
#include "repository/indexes.h"

namespace {

using namespace tarnmf;

struct IdOrder {
  bool operator()(const UniIdT& left, const UniIdT& right) const {
    return btkUniIdCompare(&left, &right) < 0;
  }
};

UniIdT RandomId(std::mt19937_64& random) {
  UniIdT id;
  for (std::uint8_t& byte : id.bytes)
    byte = static_cast<std::uint8_t>(random());
  return id;
}

// N load points, classes and services; every key is asked for in random order.
struct FilledRepository {
  explicit FilledRepository(std::int32_t count)
      : classes(static_cast<std::size_t>(count)), repo(new liMfRepoBaseImpl) {
    std::mt19937_64 random(1);
    for (MfIntfClassT& cls : classes) {
      names.push_back("com.example.component" + std::to_string(random() % 1'000'000'000));
      ids.push_back(RandomId(random));
      const std::string path = "/opt/load/point" + names.back().substr(21);
      paths.emplace_back(path.begin(), path.end());
      File(names.back(), ids.back(), paths.back(), cls);
    }
    std::shuffle(names.begin(), names.end(), random);
    std::shuffle(ids.begin(), ids.end(), random);
    std::shuffle(paths.begin(), paths.end(), random);
    for (std::size_t i = 0; i < classes.size(); ++i) {
      byId[ids[i]] = &classes[i];
      byPath[paths[i]] = &classes[i];
      UniIdT combined;
      if (btkUniIdCombine(&combined, &ids[i], &ids[i]) != kBtkOk) std::abort();
      combinedIds.push_back(combined);
      byCombinedId[combined] = &classes[i];
    }
  }

  void File(const std::string& name, const UniIdT& id, const std::u16string& path,
            MfIntfClassT& cls) {
    auto* const entry = new MfLdpEntryT(id);
    entry->data.loadpoint = btk_wcsdup(path.c_str());
    if (!FileClassEntry(*repo, name.c_str(), &id, &kBtkNullUniId, kMfPerLdp, &cls) ||
        !FileServiceEntry(*repo, name.c_str(), &id, &kBtkNullUniId, &id, kMfPerLdp, 1, &cls) ||
        !ReserveLoadpoint(*repo))
      throw std::bad_alloc();
    FileLoadpoint(*repo, entry);
  }

  std::vector<MfIntfClassT> classes;
  std::vector<std::string> names;
  std::vector<UniIdT> ids;
  std::vector<UniIdT> combinedIds;
  std::vector<std::u16string> paths;
  RepositoryPtr repo;
  std::map<UniIdT, const MfIntfClassT*, IdOrder> byId;
  std::map<UniIdT, const MfIntfClassT*, IdOrder> byCombinedId;
  std::map<std::u16string, const MfIntfClassT*> byPath;
};

const FilledRepository& Filled(std::int64_t count) {
  static std::map<std::int64_t, FilledRepository> all;
  return all.try_emplace(count, static_cast<std::int32_t>(count)).first->second;
}

// Asks for one key after the other.
template <class Keys, class Ask>
void Run(benchmark::State& state, const Keys& keys, Ask ask) {
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(ask(keys[next]));
    if (++next == keys.size()) next = 0;
  }
}

void FindServiceEntry(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.combinedIds,
      [&](const UniIdT& id) { return filled.repo->FindServiceEntry(&id); });
}
void MapOfCombinedIds(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.combinedIds, [&](const UniIdT& id) { return filled.byCombinedId.find(id); });
}
void FindLoadpoint(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.ids, [&](const UniIdT& id) { return filled.repo->FindLoadpoint(&id); });
}
void MapOfIds(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.ids, [&](const UniIdT& id) { return filled.byId.find(id); });
}
void FindService(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.paths, [&](const std::u16string& path) {
    return filled.repo->FindService(&kBtkNullUniId, path.c_str());
  });
}
void MapOfPaths(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.paths, [&](const std::u16string& path) { return filled.byPath.find(path); });
}

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(100)->Arg(10'000)->Arg(100'000);
}
BENCHMARK(FindServiceEntry)->Apply(Sizes);
BENCHMARK(MapOfCombinedIds)->Apply(Sizes);
BENCHMARK(FindLoadpoint)->Apply(Sizes);
BENCHMARK(MapOfIds)->Apply(Sizes);
BENCHMARK(FindService)->Apply(Sizes);
BENCHMARK(MapOfPaths)->Apply(Sizes);

// ---- Classes by name ---------------------------------------------------------------------------

enum NameStyle : std::int64_t { kPlain, kOnePrefix, kManyPrefixes };
constexpr const char* kStyleTexts[] = {"no prefix", "one long prefix", "many prefixes"};

// A name like "ImageStoreFactory7". Even numbers are filed, odd ones are missed.
std::string ClassName(NameStyle style, std::mt19937_64& random, bool filed) {
  constexpr const char* kWords[] = {
      "Access",  "Account", "Action",   "Audio",   "Backup",  "Batch",   "Buffer", "Cache",
      "Channel", "Client",  "Codec",    "Config",  "Content", "Context", "Cursor", "Data",
      "Device",  "Display", "Document", "Event",   "Export",  "Factory", "File",   "Filter",
      "Format",  "Handler", "Image",    "Import",  "Index",   "Layout",  "Link",   "Manager",
      "Media",   "Message", "Monitor",  "Network", "Object",  "Package", "Parser", "Policy",
      "Printer", "Query",   "Reader",   "Session", "Store",   "Stream",  "View",   "Writer"};
  constexpr const char* kPrefixes[] = {"com.example.imaging.", "com.example.storage.",
                                       "com.example.session.", "com.vendor.print.",
                                       "net.sample.codec.",    "org.project.core."};
  std::string name = style == kPlain ? "" : kPrefixes[style == kOnePrefix ? 0 : random() % 6];
  for (int i = 0; i < 3; ++i)
    name += kWords[random() % std::size(kWords)];
  return name + std::to_string(random() % 20 * 2 + (filed ? 0 : 1));
}

// N classes of one version, and what is asked for: names in random order, so often that no branch
// predictor learns them.
struct FiledClasses {
  FiledClasses(NameStyle style, std::size_t count) : classes(count), repo(new liMfRepoBaseImpl) {
    std::mt19937_64 random(2);
    std::set<std::string> names;
    while (names.size() < count)
      names.insert(ClassName(style, random, true));
    hits.assign(names.begin(), names.end());
    // A million names would take half an hour in random order: each moves what sorts after it.
    if (count <= 100'000) std::shuffle(hits.begin(), hits.end(), random);
    for (MfIntfClassT& cls : classes) {
      const std::string& name = hits[static_cast<std::size_t>(&cls - classes.data())];
      if (!FileClassEntry(*repo, name.c_str(), &kBtkNullUniId, &kBtkNullUniId, kMfPerLdp, &cls))
        throw std::bad_alloc();
      byName[name].push_back(repo->FindClassImpl(&kBtkNullUniId, name.c_str(), 0, 0));
    }
    for (std::size_t i = hits.size(); i < 100'000; ++i)
      hits.push_back(hits[i - count]);
    std::shuffle(hits.begin(), hits.end(), random);
    while (misses.size() < hits.size())
      misses.push_back(ClassName(style, random, false));
  }

  // Answers the same question as the repository, by the same rules.
  const MfSvcResolveT* FindInMap(const UniIdT* scope, const char* name, std::int16_t reqVersion,
                                 std::int16_t limit) const {
    const auto found = byName.find(std::string_view(name));
    if (found == byName.end()) return nullptr;
    const MfSvcResolveT* withoutScope = nullptr;
    const std::vector<MfSvcResolveT*>& entries = found->second;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
      if ((*entry)->versionKey < 2 * reqVersion) break;
      if ((*entry)->record->svcMinVersion > limit) continue;
      if (btkUniIdIsEqual(&(*entry)->ids[kMfScopeId], scope)) return *entry;
      if (withoutScope == nullptr && btkUniIdIsNull((*entry)->ids[kMfScopeId]))
        withoutScope = *entry;
    }
    return withoutScope;
  }

  std::vector<MfIntfClassT> classes;
  RepositoryPtr repo;
  std::map<std::string, std::vector<MfSvcResolveT*>, std::less<>> byName;
  std::vector<std::string> hits;
  std::vector<std::string> misses;
};

const FiledClasses& Filed(NameStyle style, std::int64_t count) {
  static std::pair<NameStyle, std::int64_t> made;
  static std::unique_ptr<FiledClasses> classes;
  if (classes == nullptr || made != std::pair{style, count}) {
    classes.reset();
    classes = std::make_unique<FiledClasses>(style, static_cast<std::size_t>(count));
    made = {style, count};
  }
  return *classes;
}

double Median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The repository and the map take turns of some hundred questions, in alternating order and for
// names far from each other's, so that neither a busy machine nor a warm cache favours one of them.
// Tells the medians of a question's time in nanoseconds.
void ClassesByName(benchmark::State& state) {
  constexpr std::size_t kTurn = 250;
  const auto style = static_cast<NameStyle>(state.range(0));
  const FiledClasses& filed = Filed(style, state.range(1));
  const bool hit = state.range(2) != 0;
  const std::vector<std::string>& asked = hit ? filed.hits : filed.misses;
  std::vector<double> repository;
  std::vector<double> map;
  const auto turn = [&](std::vector<double>& times, std::size_t first, auto ask) {
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = first; i < first + kTurn; ++i)
      benchmark::DoNotOptimize(ask(asked[i].c_str()));
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
    times.push_back(time.count() / kTurn);
  };
  const auto askRepository = [&](const char* name) {
    return filed.repo->FindClassImpl(&kBtkNullUniId, name, 0, 0);
  };
  const auto askMap = [&](const char* name) { return filed.FindInMap(&kBtkNullUniId, name, 0, 0); };
  std::size_t next = 0;
  for (auto _ : state) {
    const std::size_t other = (next + asked.size() / 2) % asked.size();
    if (next / kTurn % 2 == 0) {
      turn(repository, next, askRepository);
      turn(map, other, askMap);
    } else {
      turn(map, other, askMap);
      turn(repository, next, askRepository);
    }
    next = (next + kTurn) % asked.size();
  }
  state.counters["repository"] = Median(repository);
  state.counters["map"] = Median(map);
  state.counters["ratio"] = Median(repository) / Median(map);
  state.SetLabel(std::string(kStyleTexts[style]) + (hit ? ", hits" : ", misses"));
}
BENCHMARK(ClassesByName)->Apply([](benchmark::internal::Benchmark* bench) {
  for (const std::int64_t style : {kPlain, kOnePrefix, kManyPrefixes})
    for (const std::int64_t count : {100, 10'000, 100'000, 1'000'000})
      bench->Args({style, count, 1})->Args({style, count, 0});
});

}  // namespace
