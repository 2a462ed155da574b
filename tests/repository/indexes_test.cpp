// SPDX-License-Identifier: Apache-2.0
#include "repository/indexes.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "platform/runtime.h"
#include "platform/unique_id.h"
#include "repository/name_index.h"
#include "tests/support/fault.h"
#include "tests/support/wide_string.h"

namespace tarnmf {
namespace {

UniIdT Id(int number) {
  return {{static_cast<std::uint8_t>(number >> 8), static_cast<std::uint8_t>(number)}};
}

// Names of up to nine bytes of few values, so that many are prefixes of others, bare or after a long
// prefix that the first names have in common.
std::string SomeName(std::mt19937& random, bool strange) {
  std::string name = strange && random() % 8 == 0 ? "" : "com.example.component.";
  if (strange && random() % 16 == 0) name = "com.vendor.component.";
  for (auto length = random() % 10; length > 0; --length)
    name += "aAbBzXYZ_.-/:1`{\x80\xff"[random() % 18];
  return name;
}

bool IsBelow(const UniIdT& left, const UniIdT& right) {
  return btkUniIdCompare(&left, &right) < 0;
}

// What is filed, as a list that is searched from its start to its end.
class Model {
 public:
  explicit Model(std::size_t count) : classes_(count) {}

  int Number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
  std::int16_t Version() {
    constexpr std::int16_t kOdd[] = {-32768, -16385, -16384, -1, 16383, 16384, 32767};
    return Number(20) == 0 ? kOdd[Number(7)] : static_cast<std::int16_t>(Number(12));
  }
  std::string Name() { return SomeName(random_, true); }

  void FileAll(liMfRepoBaseImpl& repo) {
    for (MfIntfClassT& cls : classes_) {
      cls.svcVersion = Version();
      cls.svcMinVersion = static_cast<std::int16_t>(Number(8));
      const UniIdT loadpoint = Id(Number(30));
      const UniIdT service = Id(Number(5000));
      const UniIdT scope = Id(Number(5));
      const std::string text = Name();
      const char* const name = text.c_str();
      if (Number(2) == 0) {
        filed_.push_back({text, scope, &cls});
        ASSERT_TRUE(FileClassEntry(repo, name, &loadpoint, &scope, kMfPerLdp, &cls));
      } else {
        UniIdT combined{};
        ASSERT_EQ(btkUniIdCombine(&combined, &loadpoint, &service), kBtkOk);
        services[combined] = &cls;  // the one filed last
        ASSERT_TRUE(FileServiceEntry(repo, name, &loadpoint, &scope, &service, kMfPerLdp,
                                     cls.svcVersion, &cls));
      }
    }
  }

  // The rules of the query as one maximum: own scope before none, newest, filed last.
  const MfIntfClassT* BestClass(const std::string& name, const UniIdT& scope, int version,
                                int limit) const {
    const int threshold = static_cast<std::int16_t>((version < 0 ? 0 : 2 * version) - 1);
    std::tuple<bool, int> best;
    const MfIntfClassT* found = nullptr;
    for (const auto& [entryName, entryScope, cls] : filed_) {
      const int key = static_cast<std::int16_t>(cls->svcVersion * 2);
      if (entryName != name || key <= threshold || cls->svcMinVersion > limit) continue;
      const std::tuple rank{btkUniIdIsEqual(&entryScope, &scope), key};
      if (!std::get<0>(rank) && !btkUniIdIsNull(entryScope)) continue;
      if (found == nullptr || rank >= best) std::tie(best, found) = std::tuple{rank, cls};
    }
    return found;
  }

  std::map<UniIdT, const MfIntfClassT*, decltype(&IsBelow)> services{&IsBelow};

 private:
  struct Filed {
    std::string name;
    UniIdT scope;
    const MfIntfClassT* cls;
  };

  std::mt19937 random_{20};
  std::vector<MfIntfClassT> classes_;
  std::vector<Filed> filed_;  // class entries
};

TEST(Indexes, AnswerLikeALinearSearch) {
  Model model(20000);
  const RepositoryPtr repo(new liMfRepoBaseImpl);
  ASSERT_NO_FATAL_FAILURE(model.FileAll(*repo));
  for (int i = 0; i < 400; ++i) {
    const std::string name = model.Name();
    const UniIdT scope = Id(model.Number(6));
    const std::int16_t version = model.Version();
    const auto limit = static_cast<std::int16_t>(model.Number(9));
    const MfSvcResolveT* const answer = repo->FindClassImpl(&scope, name.c_str(), version, limit);
    EXPECT_EQ(answer != nullptr ? answer->record : nullptr,
              model.BestClass(name, scope, version, limit))
        << name << " " << version << " " << limit;
  }

  const auto count = static_cast<std::int32_t>(model.services.size());
  std::vector<MfSvcResolveT> all(model.services.size());
  EXPECT_EQ(repo->GetServiceEntries(all.data(), count - 1), count);
  EXPECT_EQ(all[0].key, nullptr);
  EXPECT_EQ(repo->GetServiceEntries(nullptr, count), count);
  EXPECT_EQ(repo->GetServiceEntries(all.data(), count), count);
  auto next = all.begin();
  for (const auto& [id, expected] : model.services) {
    const MfSvcResolveT* const entry = repo->FindServiceEntry(&id);
    ASSERT_TRUE(entry != nullptr && entry->record == expected && next++->record == expected);
  }
}

int g_comparisons = 0;

template <auto Compare, bool IsOfBytes = false>
struct OrderBy {
  static constexpr bool kIsOfBytes = IsOfBytes;
  int operator()(const char* left, const char* right) const {
    ++g_comparisons;
    return Compare(left, right);
  }
};
using ByBytes = OrderBy<std::strcmp, true>;
using ByBytesUnknown = OrderBy<std::strcmp>;
using Backwards =
    OrderBy<[](const char* left, const char* right) { return std::strcmp(right, left); }>;
using IgnoringLetterCase = OrderBy<btk_strcasecmp>;

template <class Order>
struct FiledNames {
  void File(const std::string& name) {
    at = index.Find(name.c_str());
    if (at.found || !index.ReserveOne()) return;
    index.EmplaceReserved(at.place, names.emplace_back(name).c_str());
  }

  BisectResult at;
  std::list<std::string> names;
  NameIndex<ResolveBucketT, 32, DestroysElements, Order> index;
};

template <class Order>
void ExpectLinearSearch() {
  std::mt19937 random(7);
  FiledNames<Order> filed;
  for (int i = 0; i < 3000; ++i) {
    const std::string name = SomeName(random, i > 300);
    int counts[3] = {};  // before, equal, after
    for (const std::string& other : filed.names)
      ++counts[std::clamp(Order{}(other.c_str(), name.c_str()), -1, 1) + 1];
    filed.File(name);
    ASSERT_TRUE(filed.at.place == counts[0] && filed.at.found == (counts[1] != 0)) << name;
  }
}
TEST(NameIndex, FindsLikeALinearSearchInAnyOrder) {
  ExpectLinearSearch<ByBytes>();
  ExpectLinearSearch<ByBytesUnknown>();
  ExpectLinearSearch<Backwards>();
  ExpectLinearSearch<IgnoringLetterCase>();
}

// A wrong guess shows in nothing but the number of comparisons.
TEST(NameIndex, ComparesOnlyWhatIsFoundAmongNamesWithPrefixes) {
  const auto isStrange = [](int i) { return i % 35 == 0; };
  const auto name = [&](int i) {
    constexpr const char* kPrefixes[] = {"com.example.image", "com.example.storage", "org.",
                                         "org.sample.component"};
    return (isStrange(i) ? "d." : kPrefixes[i / 2 % 4]) + std::to_string(100000 + i);
  };
  FiledNames<ByBytes> filed;
  for (int i = 1; i < 5000; i += 2)
    filed.File(name(i * 7 % 5000));
  for (int i = 1; i < 4999; ++i) {
    g_comparisons = 0;
    EXPECT_EQ(filed.index.Find(name(i).c_str()).found, i % 2 == 1);
    EXPECT_LE(g_comparisons, isStrange(i) ? 7 : i % 2) << name(i);
  }
}

std::string SomeWords(std::mt19937& random) {
  constexpr const char* kWords[] = {"Account", "Buffer",  "Cache",   "Document", "Event",
                                    "Factory", "Handler", "Import",  "Layout",   "Message",
                                    "Network", "Package", "Session", "Store",    "Writer"};
  std::string name = "com.example.";
  for (int i = 0; i < 4; ++i)
    name += kWords[random() % std::size(kWords)];
  // A few names have what words do not: what is rare has the least room in the code.
  for (auto length = random() % 16 == 0 ? random() % 12 : 0; length > 0; --length)
    name[name.size() - 1 - random() % 20] = static_cast<char>('a' + random() % 26);
  return name;
}

TEST(NameIndex, LearnsTheWordsOfManyNames) {
  struct {
    std::function<std::string(std::mt19937&)> name;
    double comparisons;  // for each name that is found, on average
  } const kCases[] = {{SomeWords, 1.1},
                      {[](std::mt19937& random) { return SomeName(random, true); }, 20}};
  for (const auto& each : kCases) {
    std::mt19937 random(3);
    std::set<std::string> all;
    while (all.size() < 40'000)
      all.insert(each.name(random));
    const std::vector<std::string> names(all.begin(), all.end());
    FiledNames<ByBytes> filed;
    for (std::size_t i = 1; i < names.size(); i += 2)
      filed.File(names[i]);
    g_comparisons = 0;
    for (std::size_t i = 1; i < names.size(); i += 2)
      ASSERT_TRUE(filed.index.Find(names[i].c_str()).found) << names[i];
    EXPECT_LE(g_comparisons, each.comparisons * 20'000);
    for (std::size_t i = 0; i < names.size(); i += 2) {
      const BisectResult at = filed.index.Find(names[i].c_str());
      ASSERT_TRUE(!at.found && at.place == static_cast<std::int32_t>(i / 2)) << names[i];
    }
  }
}

std::unique_ptr<MfLdpEntryT> NewLoadpoint(int id, const test::WideString& path) {
  auto entry = std::make_unique<MfLdpEntryT>(Id(id));
  entry->data.loadpoint = btk_wcsdup(path.c_str());
  return entry;
}

TEST(Indexes, KeepTheLoadpointFiledLastUnderEachKey) {
  const test::LeakCheck check;  // displaced records included
  std::mt19937 random(4);
  const RepositoryPtr repo(new liMfRepoBaseImpl);
  std::map<int, MfLdpEntryT*> byId;
  std::map<test::WideString, MfLdpEntryT*> byPath;
  for (int i = 0; i < 500; ++i) {
    const int id = static_cast<int>(random() % 300);
    const test::WideString path = {BTK_W('/'),
                                   static_cast<btkWChar>(BTK_W('\u4e00') + random() % 300)};
    ASSERT_TRUE(ReserveLoadpoint(*repo));
    byId[id] = byPath[path] = &FileLoadpoint(*repo, NewLoadpoint(id, path));
  }
  std::vector<UniIdT> ids(byId.size());
  const auto count = static_cast<std::int32_t>(ids.size());
  EXPECT_EQ(repo->GetLoadpointIds(ids.data(), count), count);
  EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end(), IsBelow));
  for (int id = 0; id < 300; ++id) {
    const UniIdT key = Id(id);
    EXPECT_EQ(repo->FindLoadpoint(&key), byId.contains(id) ? &byId[id]->data : nullptr);
  }
  EXPECT_EQ(repo->FindLoadpoint(nullptr), &byId[0]->data);
  EXPECT_TRUE(std::equal(repo->loadpointsByPath.begin(), repo->loadpointsByPath.end(),
                         byPath.begin(), byPath.end(),
                         [](auto* filed, auto& expected) { return filed == expected.second; }));
}

TEST(Indexes, AnswerNothingWhenEmptyOrAskedForNull) {
  const RepositoryPtr repo(new liMfRepoBaseImpl);
  MfIntfClassT cls;
  UniIdT id = Id(1);
  for (const std::int32_t filed : {0, 1}) {
    EXPECT_TRUE(repo->FindLoadpoint(nullptr) == nullptr &&
                repo->FindService(&id, nullptr) == nullptr &&
                repo->FindService(nullptr, nullptr) == nullptr &&
                repo->FindClassImpl(&id, nullptr, 0, 0) == nullptr &&
                repo->FindServiceEntry(nullptr) == nullptr);
    EXPECT_EQ(repo->GetLoadpointIds(nullptr, 0), filed);
    EXPECT_EQ(repo->GetLoadpointIds(&id, 0), filed);
    if (filed != 0) break;
    ASSERT_TRUE(FileClassEntry(*repo, "x", &id, &kBtkNullUniId, kMfPerLdp, &cls) &&
                FileServiceEntry(*repo, "x", &id, &kBtkNullUniId, &id, kMfPerLdp, 1, nullptr) &&
                ReserveLoadpoint(*repo));
    FileLoadpoint(*repo, NewLoadpoint(2, BTK_W("/p")));
  }
  EXPECT_EQ(repo->names.Count(), 1);  // one copy for both indexes
  EXPECT_NE(repo->FindClassImpl(nullptr, "x", 0, 0), nullptr);
}

}  // namespace
}  // namespace tarnmf
