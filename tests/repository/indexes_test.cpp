#include "repository/indexes.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "platform/unique_id.h"
#include "tests/support/allocation_fault.h"

namespace tarnmf {
namespace {

using test::AllocationFault;

UniIdT Id(int number) {
  return {{static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)}};
}

RepositoryPtr NewRepository() {
  return RepositoryPtr(new liMfRepoBaseImpl);
}

bool IsBelow(const UniIdT& left, const UniIdT& right) {
  return btkUniIdCompare(&left, &right) < 0;
}

// The order of versions within one name: doubled, in 16 bits.
int Key(int version) {
  return static_cast<std::int16_t>(version * 2);
}

// What the model knows of the entry that was filed for the class with the same index.
struct FiledEntry {
  std::string name;
  int scope;
  int loadpoint;
  int service;  // 0: a class entry
};

class Model {
 public:
  explicit Model(std::int32_t count) : classes(static_cast<std::size_t>(count)) {}

  int Number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  int Version() {
    constexpr int kOdd[] = {-32768, -16385, -16384, -1, 16383, 16384, 32767};
    return Number(20) == 0 ? kOdd[Number(7)] : Number(12);
  }
  std::string Name() {
    const std::string word = std::to_string(Number(2000));
    return (Number(2) == 0 ? "Class" : "class") + word;
  }

  void FileAll(liMfRepoBaseImpl& repo) {
    for (MfIntfClassT& cls : classes) {
      cls.svcVersion = static_cast<std::int16_t>(Version());
      cls.svcMinVersion = static_cast<std::int16_t>(Number(8));
      filed.push_back({Name(), Number(5), Number(30), Number(2) == 0 ? 0 : 1 + Number(5000)});
      const FiledEntry& entry = filed.back();
      const UniIdT ids[] = {Id(entry.loadpoint), Id(entry.scope), Id(entry.service)};
      const bool done =
          entry.service == 0
              ? FileClassEntry(repo, entry.name.c_str(), &ids[0], &ids[1], kMfPerLdp, &cls)
              : FileServiceEntry(repo, entry.name.c_str(), &ids[0], &ids[1], &ids[2], kMfPerLdp,
                                 cls.svcVersion, &cls);
      ASSERT_TRUE(done);
    }
  }

  // The rules of the query as one maximum: own scope before none, newest, filed last.
  const MfIntfClassT* BestClass(const std::string& name, int scope, int version, int limit) const {
    const int threshold = static_cast<std::int16_t>((version < 0 ? 0 : 2 * version) - 1);
    std::tuple<bool, int, std::size_t> best;
    const MfIntfClassT* found = nullptr;
    for (std::size_t i = 0; i < filed.size(); ++i) {
      const FiledEntry& entry = filed[i];
      const int key = Key(classes[i].svcVersion);
      if (entry.service != 0 || entry.name != name || key <= threshold) continue;
      if (classes[i].svcMinVersion > limit || (entry.scope != scope && entry.scope != 0)) continue;
      const std::tuple rank{entry.scope == scope, key, i};
      if (found == nullptr || rank > best) std::tie(best, found) = std::tuple{rank, &classes[i]};
    }
    return found;
  }

  std::vector<MfIntfClassT> classes;
  std::vector<FiledEntry> filed;

 private:
  std::mt19937 random_{20};
};

TEST(Indexes, AnswerLikeALinearSearch) {
  Model model(100000);
  const RepositoryPtr repo = NewRepository();
  ASSERT_NO_FATAL_FAILURE(model.FileAll(*repo));
  for (int i = 0; i < 400; ++i) {
    const std::string name = model.Name();
    const int scope = model.Number(6);
    const int version = model.Version();
    const int limit = model.Number(9);
    const UniIdT scopeId = Id(scope);
    const MfSvcResolveT* const answer =
        repo->FindClassImpl(&scopeId, name.c_str(), static_cast<std::int16_t>(version),
                            static_cast<std::int16_t>(limit));
    const MfIntfClassT* const expected = model.BestClass(name, scope, version, limit);
    ASSERT_EQ(answer != nullptr ? answer->record : nullptr, expected)
        << name << " " << scope << " " << version << " " << limit;
    if (answer == nullptr) continue;
    const FiledEntry& filed =
        model.filed[static_cast<std::size_t>(expected - model.classes.data())];
    const UniIdT loadpoint = Id(filed.loadpoint);
    EXPECT_EQ(std::string(answer->key), name);
    EXPECT_EQ(answer->kind, kMfClassEntry);
    EXPECT_EQ(answer->multiplicity, kMfPerLdp);
    EXPECT_EQ(answer->versionKey, Key(expected->svcVersion));
    EXPECT_TRUE(btkUniIdIsNull(answer->ids[kMfCombinedId]) &&
                btkUniIdIsNull(answer->ids[kMfServiceId]));
    EXPECT_TRUE(btkUniIdIsEqual(&answer->ids[kMfLoadpointId], &loadpoint));
  }

  std::map<std::pair<int, int>, std::size_t> services;  // the one filed last
  for (std::size_t i = 0; i < model.filed.size(); ++i) {
    const FiledEntry& entry = model.filed[i];
    if (entry.service != 0) services[{entry.loadpoint, entry.service}] = i;
  }
  for (const auto& [ids, index] : services) {
    const UniIdT loadpoint = Id(ids.first);
    const UniIdT service = Id(ids.second);
    UniIdT combined{};
    ASSERT_EQ(btkUniIdCombine(&combined, &loadpoint, &service), kBtkOk);
    const MfSvcResolveT* const answer = repo->FindServiceEntry(&combined);
    ASSERT_NE(answer, nullptr);
    ASSERT_EQ(answer->record, &model.classes[index]);
    EXPECT_TRUE(answer->kind == kMfServiceEntry && answer->key == model.filed[index].name &&
                btkUniIdIsEqual(&answer->ids[kMfServiceId], &service) &&
                btkUniIdIsEqual(&answer->ids[kMfCombinedId], &combined));
  }

  const auto count = static_cast<std::int32_t>(services.size());
  std::vector<MfSvcResolveT> all(services.size());
  EXPECT_EQ(repo->GetServiceEntries(all.data(), count - 1), count);
  EXPECT_EQ(all[0].key, nullptr);
  EXPECT_EQ(repo->GetServiceEntries(nullptr, count), count);
  EXPECT_EQ(repo->GetServiceEntries(all.data(), count), count);
  for (std::size_t i = 0; i < all.size(); ++i) {
    ASSERT_TRUE(i == 0 || IsBelow(all[i - 1].ids[kMfCombinedId], all[i].ids[kMfCombinedId]));
    ASSERT_EQ(repo->FindServiceEntry(&all[i].ids[kMfCombinedId])->record, all[i].record);
  }
}

// A load point with one runnable that offers the given service.
MfLdpEntryT* NewLoadpoint(int id, const std::u16string& path, int service) {
  auto* const entry = new MfLdpEntryT(Id(id));
  entry->data.loadpoint = btk_wcsdup(path.c_str());
  auto* const runnable = new MfRunnableT;
  GrowableArray<MfServiceRoleT*, 2> services;
  GrowableArray<MfRunnableT*, 2> runnables;
  EXPECT_TRUE(services.Append(new MfServiceRoleT) && runnables.Append(runnable));
  services.Last()->id = Id(service);
  services.HandOver(runnable->services);
  runnables.HandOver(entry->data.runnables);
  return entry;
}

TEST(Indexes, KeepTheLoadpointFiledLastUnderEachKey) {
  const std::int64_t live = test::LiveAllocations();
  {
    std::mt19937 random(4);
    const RepositoryPtr repo = NewRepository();
    std::map<int, MfLdpEntryT*> byId;
    std::map<std::u16string, std::pair<MfLdpEntryT*, int>> byPath;
    for (int i = 0; i < 500; ++i) {
      const int id = static_cast<int>(random() % 300);
      const std::u16string path =
          u"/opt/" + std::u16string(1, static_cast<char16_t>(u'\u0100' + random() % 300));
      MfLdpEntryT* const entry = NewLoadpoint(id, path, i);
      ASSERT_TRUE(ReserveLoadpoint(*repo));
      FileLoadpoint(*repo, entry);
      byId[id] = entry;
      byPath[path] = {entry, i};
    }
    const auto count = static_cast<std::int32_t>(byId.size());
    std::vector<UniIdT> ids(byId.size());
    EXPECT_EQ(repo->GetLoadpointIds(ids.data(), count), count);
    EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end(), IsBelow));
    for (int id = 0; id < 300; ++id) {
      const UniIdT key = Id(id);
      EXPECT_EQ(repo->FindLoadpoint(&key), byId.contains(id) ? &byId[id]->data : nullptr);
    }
    EXPECT_EQ(repo->FindLoadpoint(nullptr), repo->FindLoadpoint(&kBtkNullUniId));
    EXPECT_NE(repo->FindLoadpoint(nullptr), nullptr);
    for (const auto& [path, value] : byPath) {
      const UniIdT service = Id(value.second);
      const UniIdT other = Id(value.second + 1);
      EXPECT_EQ(repo->FindService(&service, path.c_str()),
                value.first->data.runnables[0]->services[0]);
      EXPECT_EQ(repo->FindService(&other, path.c_str()), nullptr);
    }
  }
  EXPECT_EQ(test::LiveAllocations(), live);  // displaced records included
}

TEST(Indexes, AnswerNothingWhenEmptyOrAskedForNull) {
  const RepositoryPtr repo = NewRepository();
  MfIntfClassT cls;
  const UniIdT id = Id(1);
  UniIdT ids[1] = {id};
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(repo->FindLoadpoint(nullptr), nullptr);
    EXPECT_EQ(repo->FindService(nullptr, nullptr), nullptr);
    EXPECT_EQ(repo->FindService(&id, nullptr), nullptr);
    EXPECT_EQ(repo->FindClassImpl(&id, nullptr, 0, 0), nullptr);
    EXPECT_EQ(repo->FindServiceEntry(nullptr), nullptr);
    EXPECT_EQ(repo->GetLoadpointIds(nullptr, 0), round);
    EXPECT_EQ(repo->GetLoadpointIds(ids, 0), round);
    EXPECT_EQ(repo->GetServiceEntries(nullptr, 9), round);
    if (round == 1) break;
    ASSERT_TRUE(FileClassEntry(*repo, "x", &id, &kBtkNullUniId, kMfPerLdp, &cls));
    ASSERT_TRUE(FileServiceEntry(*repo, "x", &id, &kBtkNullUniId, &id, kMfPerLdp, 1, nullptr));
    ASSERT_TRUE(ReserveLoadpoint(*repo));
    FileLoadpoint(*repo, NewLoadpoint(2, u"/p", 3));
  }
  EXPECT_EQ(repo->names.Count(), 1);  // one copy for both indexes
  EXPECT_NE(repo->FindClassImpl(nullptr, "x", 0, 0), nullptr);
}

TEST(Indexes, FileAllOrNothingWhenMemoryEnds) {
  for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
    bool hit = true;
    for (int n = 0; hit; ++n) {
      const std::int64_t live = test::LiveAllocations();
      {
        const RepositoryPtr repo = NewRepository();
        MfIntfClassT cls;
        const UniIdT ids[] = {Id(1), Id(2)};
        bool done[2];
        {
          AllocationFault fault(source, n);
          fault.Arm();
          done[0] = FileClassEntry(*repo, "name", &ids[0], &kBtkNullUniId, kMfPerLdp, &cls);
          done[1] =
              FileServiceEntry(*repo, "name", &ids[0], &kBtkNullUniId, &ids[1], kMfPerLdp, 1, &cls);
          hit = fault.Hit();
        }
        EXPECT_EQ(hit, !done[0] || !done[1]) << n;
        EXPECT_EQ(repo->FindClassImpl(&kBtkNullUniId, "name", 0, 0) != nullptr, done[0]) << n;
        EXPECT_EQ(repo->GetServiceEntries(nullptr, 0), done[1] ? 1 : 0) << n;
        EXPECT_TRUE(FileClassEntry(*repo, "name", &ids[0], &kBtkNullUniId, kMfPerLdp, &cls));
        EXPECT_TRUE(
            FileServiceEntry(*repo, "name", &ids[0], &kBtkNullUniId, &ids[1], kMfPerLdp, 1, &cls));
        EXPECT_EQ(repo->classIndex[0].byVersion.Count(), done[0] ? 2 : 1);
      }
      EXPECT_EQ(test::LiveAllocations(), live) << n;
    }
  }
}

}  // namespace
}  // namespace tarnmf
