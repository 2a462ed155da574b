// The repository's queries on N entries, each next to a std::map with the same keys.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <map>
#include <random>
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
      byName[names[i]] = &classes[i];
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
  std::map<std::string, const MfIntfClassT*, std::less<>> byName;
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

void FindClassImpl(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.names, [&](const std::string& name) {
    return filled.repo->FindClassImpl(&kBtkNullUniId, name.c_str(), 0, 0);
  });
}
// Answers the same question for the same argument: the class with this name, if its oldest
// supported version is within the limit.
void MapOfNames(benchmark::State& state) {
  const FilledRepository& filled = Filled(state.range(0));
  Run(state, filled.names, [&](const std::string& name) -> const MfIntfClassT* {
    const auto found = filled.byName.find(std::string_view(name.c_str()));
    if (found == filled.byName.end() || found->second->svcMinVersion > 0) return nullptr;
    return found->second;
  });
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
BENCHMARK(FindClassImpl)->Apply(Sizes);
BENCHMARK(MapOfNames)->Apply(Sizes);
BENCHMARK(FindServiceEntry)->Apply(Sizes);
BENCHMARK(MapOfCombinedIds)->Apply(Sizes);
BENCHMARK(FindLoadpoint)->Apply(Sizes);
BENCHMARK(MapOfIds)->Apply(Sizes);
BENCHMARK(FindService)->Apply(Sizes);
BENCHMARK(MapOfPaths)->Apply(Sizes);

}  // namespace
