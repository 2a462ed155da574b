// SPDX-License-Identifier: Apache-2.0
// Which batches are accepted, why others are refused, and what the accepted ones are filed as.
#include <algorithm>
#include <random>
#include <set>
#include <string_view>

#include "tests/publish/batch.h"
#include "tests/support/case_file.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {
namespace {

// By role, the number of the side that asks for it and a letter: app, agent, service client, service
// server, generic.
const std::string kUses[] = {"0p", "2a", "0c", "1s", "0g"};

// All that the checks tell of a refused batch, in words; a record by its id.
std::string WhyRefused(const Batch& batch, const PublishIndexT& merged) {
  constexpr const char* kCauses[] = {
      "",           "memory", "same module",    "no implementation", "same machine",
      "same class", "needs",  "unknown module", "excluded"};
  PublishIndexT index;
  const Refusal why = CheckBatch(batch.data.modules, batch.data.classes, index, merged);
  std::string text = kCauses[static_cast<int>(why.cause)];
  const auto add = [&](const std::string& more) { text += " " + more; };
  if (why.module != nullptr) add(why.module->id);
  if (why.otherModule != nullptr) add(why.otherModule->id);
  if (why.machineType != nullptr) add(why.machineType);
  if (why.intfClass != nullptr) add(IdText(why.intfClass->ids[kMfClientSide]));
  if (why.neededSides != 0) add(std::to_string(why.neededSides));
  if (why.cause >= RefusalCause::kUnknownModule) add(std::to_string(why.side) + kUses[why.role][1]);
  if (why.otherClass != nullptr) add(IdText(why.otherClass->ids[kMfClientSide]));
  if (why.cause == RefusalCause::kExcludedByOtherRole)
    add(std::to_string(why.otherSide) + kUses[why.otherRole][1]);
  return text;
}

TEST(Validation, SaysWhyABatchIsRefused) {
  for (const FileCase& row : ReadCaseFile(TARNMF_CASES "/refusals.cases")) {
    SCOPED_TRACE(row.name);
    const std::size_t cut = row.input.find(" then ");
    const Batch earlier(cut != std::string::npos ? row.input.substr(0, cut) : "");
    const std::string text = cut != std::string::npos ? row.input.substr(cut + 6) : row.input;
    const Batch checked(text);
    const Batch batch(text);
    const PublisherPtr publisher = MakePublisher();
    ASSERT_EQ(earlier.AddTo(*publisher), kBtkOk);
    const bool accepted = row.result == "accepted";
    EXPECT_EQ(WhyRefused(checked, publisher->merged), accepted ? "" : row.result);
    EXPECT_EQ(batch.AddTo(*publisher), accepted ? kBtkOk : kBtkUnexpected);
    EXPECT_EQ(Count(publisher->batch), 0);
    const int modules = earlier.data.modules.count + (accepted ? batch.data.modules.count : 0);
    EXPECT_EQ(publisher->newModules.Count() + publisher->merged.modules.Count(), 2 * modules);
  }
}

TEST(Validation, ChecksItsArguments) {
  const Batch batch(Module("a"));
  const PublisherPtr publisher = MakePublisher();
  EXPECT_EQ(publisher->Add(nullptr, 1, nullptr, 0, nullptr, 0), kBtkNullArgument);
  EXPECT_EQ(publisher->Add(nullptr, 0, nullptr, 1, nullptr, 0), kBtkNullArgument);
  EXPECT_EQ(publisher->Add(nullptr, 0, batch.data.modules.items, 1, nullptr, 1), kBtkNullArgument);
  EXPECT_EQ(batch.data.modules[0]->selectedImpl, nullptr);
  auto** const unreadable = reinterpret_cast<MfModuleT**>(16);
  EXPECT_EQ(publisher->Add(nullptr, -1, unreadable, -1, nullptr, 0), kBtkOk);
  MfModuleT empty;
  MfModuleT* modules[] = {&empty};
  EXPECT_EQ(CheckFirstBatch({modules, 1}, {}).cause, RefusalCause::kNoImplementation);
}

// ---- Roles -------------------------------------------------------------------------------------

// The roles that module m has after a first class (row) and a second one (column) in one batch; in
// two batches, where that is not the same, after the slash. "": the first role excludes the second;
// "?": the module has to be in the batch at hand.
constexpr const char* kRolesTogether[5][5] = {
    {"p", "", "", "", ""},          //
    {"", "a", "", "", ""},          //
    {"", "", "cg", "", "cg"},       //
    {"", "", "", "sg", "sg"},       //
    {"", "", "cg/?", "sg/?", "g"},  //
};

// Of all modules of an index, which have one only.
std::string RolesIn(const PublishIndexT& index) {
  std::string roles;
  for (std::size_t i = 0; i < 5; ++i)
    roles.append(static_cast<std::size_t>((index.*kModuleLists[1 + i]).Count()), kUses[i][1]);
  return roles;
}

TEST(Roles, GoTogetherOrExcludeEachOther) {
  for (int cell = 0; cell < 5 * 5 * 2; ++cell) {
    SCOPED_TRACE(cell);
    const int first = cell / 10;
    const int second = cell / 2 % 5;
    const bool inOneBatch = cell % 2 == 0;
    const std::string start = Module("m") + ClassInRole(first, "$1", "m");
    const Batch earlier(inOneBatch ? "" : start);
    const Batch batch((inOneBatch ? start : "") + ClassInRole(second, "$2", "m"));
    const PublisherPtr publisher = MakePublisher();
    ASSERT_EQ(earlier.AddTo(*publisher), kBtkOk);
    std::string roles = kRolesTogether[first][second];
    if (const std::size_t slash = roles.find('/'); slash != std::string::npos)
      roles = inOneBatch ? roles.substr(0, slash) : roles.substr(slash + 1);

    std::string refusal;
    if (roles == "?") refusal = "unknown module #2 " + kUses[second];
    if (roles == "")
      refusal = "excluded #2 " + kUses[second] + (inOneBatch ? " #1 " : " ") + kUses[first];
    if (!refusal.empty()) roles = RolesIn(publisher->merged);
    EXPECT_EQ(WhyRefused(batch, publisher->merged), refusal);
    EXPECT_EQ(batch.AddTo(*publisher), refusal.empty() ? kBtkOk : kBtkUnexpected);
    EXPECT_EQ(RolesIn(publisher->merged), roles);
  }
}

// ---- Sides -------------------------------------------------------------------------------------

// What becomes of a second record (column) of a first one's class (row); the sides of each are the
// sum of 1 (client), 2 (service) and 4 (agent). "+": it completes the first, "=": it is refused, "!":
// the first one is.
constexpr const char* kCompletions[8] = {
    "!!!!!!!!", "==+===+=", "=+===+==", "========", "!!!!!!!!", "==+=====", "=+======", "========"};

std::string Modules(const std::string& number) {
  return Module("c" + number) + Module("s" + number) + Module("a" + number);
}

// The class with the sides `ones`, which name modules of number 1, and otherwise `twos`.
std::string Record(int ones, int twos) {
  const auto module = [&](int side, const std::string& name) {
    return (ones & side) != 0 ? name + "1" : (twos & side) != 0 ? name + "2" : "";
  };
  return Class("service", "$5", module(1, "c"), module(2, "s"), module(4, "a"));
}

TEST(Sides, CompleteARecordOfTheSameClass) {
  for (int cell = 0; cell < 8 * 8 * 2; ++cell) {
    SCOPED_TRACE(cell);
    const int first = cell / 16;
    const int second = cell / 2 % 8;
    const bool inOneBatch = cell % 2 == 0;
    const char expected = kCompletions[first][second];
    const std::string start = Modules("1") + Record(first, 0);
    const Batch earlier(inOneBatch ? "" : start);
    const Batch batch((inOneBatch ? start : "") + Modules("2") + Record(0, second));
    const PublisherPtr publisher = MakePublisher();
    const BtkErrorT begun = earlier.AddTo(*publisher);
    EXPECT_EQ(begun, !inOneBatch && expected == '!' ? kBtkUnexpected : kBtkOk);
    if (begun != kBtkOk) continue;

    MfIntfClassT* const one = inOneBatch ? batch.data.classes[0] : earlier.data.classes[0];
    const MfIntfClassT* const two = batch.data.classes[inOneBatch ? 1 : 0];
    const std::string before = Dump(*one) + Dump(*two);
    EXPECT_EQ(batch.AddTo(*publisher), expected == '+' ? kBtkOk : kBtkUnexpected);
    if (expected != '+') {
      EXPECT_EQ(Dump(*one) + Dump(*two), before);
      EXPECT_EQ(WhyRefused(batch, publisher->merged),
                expected == '!' ? "needs #5 3" : "same class #5 #5");
      continue;
    }
    ASSERT_EQ(publisher->merged.classes.Count(), 1);
    EXPECT_EQ(publisher->merged.classes[0], one);
    EXPECT_EQ(Dump(*one), Dump(*Batch(Record(first, second)).data.classes[0]));
    for (const MfIntfSideT& side : two->sides)
      EXPECT_EQ(side.moduleref, nullptr);
  }
}

// ---- Lists -------------------------------------------------------------------------------------

// Ids of two kinds, some of which differ late. All end with the number's last digit.
std::string ModuleId(int number) {
  return number % 3 == 0 ? "m" + std::to_string(10000 + 21 * number)
                         : "modules.of.a.family." + std::to_string(number);
}
const std::string kClassId = "00000000-0000-0000-0000-0000000";  // and five digits

// Three batches of modules in a mixed order; each is used by the class with its number, in the role
// number % 5.
TEST(Validation, FilesAndResolvesManyRecords) {
  constexpr int kMany = 3000;
  std::string texts[3];
  for (int i = 0; i < kMany; ++i) {
    const int number = i * 137 % kMany;
    const std::string id = ModuleId(number);
    texts[number % 3] +=
        "<module id='" + id + "' name='" + id + "' loadpoint='/lp'/>" +
        ClassInRole(number % 5, kClassId + std::to_string(10000 + 19 * number), id);
  }
  const Batch batches[] = {Batch(texts[0]), Batch(texts[1]), Batch(texts[2])};
  const PublisherPtr publisher = MakePublisher();
  for (const Batch& batch : batches)
    ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
  const auto wrong = [](auto* left, auto* right) { return CompareKeys(*left, *right) >= 0; };
  // Each is in one list, in one of a role and, two of five times, in the generic one as well.
  EXPECT_EQ(Count(publisher->merged), kMany / 5 * (5 + 5 + 2 + 5));
  for (int i = 0; i < 6; ++i) {
    const SortedModules& list = publisher->merged.*kModuleLists[i];
    EXPECT_EQ(std::ranges::adjacent_find(list, wrong), list.end());
    EXPECT_TRUE(std::ranges::all_of(list, [&](const MfModuleT* module) {
      const int role = (std::string_view(module->id).back() - '0') % 5;
      return i == 0 || role == i - 1 || (i == 5 && role >= 2);  // the generic list is the last
    })) << i;
  }
  const SortedClasses& classes = publisher->merged.classes;
  EXPECT_EQ(std::ranges::adjacent_find(classes, wrong), classes.end());

  RecordingManagers managers;
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  for (int number = kServiceServerRole; number < kMany; number += 5)
    EXPECT_EQ(classes[number]->sides[kMfServiceSide].moduleref, "/lp/native/" + ModuleId(number));
}

// A module is refused whose id is there before; a class, when its side is.
TEST(Validation, RefusesTheFirstRepeatedRecord) {
  std::mt19937 random(1);
  const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
  for (int round = 0; round < 500; ++round) {
    std::string text = Module("0") + Module("1");
    for (int i = 0; i < 30; ++i)
      text += Module(ModuleId(below(900)));
    int sides[12];
    for (int& side : sides) {
      side = below(2);  // client or service
      const std::string id = kClassId + std::to_string(10000 + below(40));
      text += ClassInRole(kServiceClientRole + side, id, std::to_string(side));
    }
    const Batch batch(text);
    const Refusal why = CheckFirstBatch(batch.data.modules, batch.data.classes);
    std::set<std::pair<std::string, int>> known;  // ids, those of classes by side
    const MfModuleT* module = nullptr;
    for (const MfModuleT* record : batch.data.modules) {
      if (!known.insert({record->id, -1}).second && module == nullptr) module = record;
      EXPECT_EQ(record->selectedImpl == nullptr, module != nullptr);
    }
    EXPECT_EQ(why.module, module);
    const MfIntfClassT* refused = nullptr;
    for (std::int32_t i = 0; i < 12 && module == nullptr && refused == nullptr; ++i) {
      const MfIntfClassT& record = *batch.data.classes[i];
      const std::string id = IdText(record.ids[kMfClientSide]);
      if (!known.insert({id, sides[i]}).second) refused = &record;
      const bool moves = refused == nullptr && known.contains({id, 1 - sides[i]});
      EXPECT_NE(MfHasSide(record, static_cast<MfSideT>(sides[i])), moves);
    }
    EXPECT_EQ(why.intfClass, refused);
  }
}

}  // namespace
}  // namespace tarnmf::test
