// Which batches are accepted, why others are refused, and what the accepted ones are filed as.
#include <algorithm>

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

// A hundred of 300 modules "m<number>" in a mixed order; each is used by one class, in the role
// number % 5.
std::string ManyRecords(int batch) {
  std::string text;
  for (int i = batch * 100; i < (batch + 1) * 100; ++i) {
    const int number = i * 137 % 300;
    const std::string module = "m" + std::to_string(number);
    const std::string digits = std::to_string(100000 + number * 7919 % 100003);
    text +=
        Module(module) + ClassInRole(number % 5, "00000000-0000-0000-0000-000000" + digits, module);
  }
  return text;
}

TEST(Validation, FilesWhatALinearSearchFinds) {
  const Batch batches[] = {Batch(ManyRecords(0)), Batch(ManyRecords(1)), Batch(ManyRecords(2))};
  std::vector<MfModuleT*> modules;
  std::vector<MfIntfClassT*> classes;
  const PublisherPtr publisher = MakePublisher();
  for (const Batch& batch : batches) {
    ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
    modules.insert(modules.end(), batch.data.modules.begin(), batch.data.modules.end());
    classes.insert(classes.end(), batch.data.classes.begin(), batch.data.classes.end());
  }
  const auto byKey = [](auto* left, auto* right) { return CompareKeys(*left, *right) < 0; };
  std::sort(modules.begin(), modules.end(), byKey);
  std::sort(classes.begin(), classes.end(), byKey);
  for (int i = 0; i < 6; ++i) {
    const SortedModules& list = publisher->merged.*kModuleLists[i];
    std::vector<MfModuleT*> expected = modules;
    std::erase_if(expected, [&](const MfModuleT* module) {
      const int role = std::stoi(module->id + 1) % 5;
      return i > 0 && role != i - 1 && !(i == 5 && role >= 2);  // the generic list is the last
    });
    EXPECT_EQ(std::vector<MfModuleT*>(list.begin(), list.end()), expected) << i;
  }
  const SortedClasses& list = publisher->merged.classes;
  EXPECT_EQ(std::vector<MfIntfClassT*>(list.begin(), list.end()), classes);
}

}  // namespace
}  // namespace tarnmf::test
