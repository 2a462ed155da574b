// SPDX-License-Identifier: Apache-2.0
// What a publisher keeps for the next time.
#include <cstring>
#include <deque>

#include "platform/runtime.h"
#include "tests/publish/batch.h"

// This program has its own functions in place of the host layer's, which note what is asked.
static std::string* g_asked = nullptr;
static bool g_lastIdFirst = false;

static const char* Answer(const char* question, const char* answer) {
  if (g_asked != nullptr) *g_asked += question;
  return answer;
}
const char* btkGetVexMachine() {
  return Answer("native ", "here");
}
const char* btkGetVexMachine3264(const char* /*machine*/) {
  return Answer("alternate ", "there");
}
int btkUniIdCompare(const UniIdT* left, const UniIdT* right) {
  const int order = std::memcmp(left->bytes, right->bytes, sizeof left->bytes);
  return g_lastIdFirst ? -order : order;
}

namespace tarnmf::test {
namespace {

TEST(Publisher, PublishesWhatIsToBePublished) {
  RecordingManagers managers;
  const Batch batch(kFirstBatch);
  const PublisherPtr publisher = MakePublisher();
  ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
  managers.Refuse("PublishRefList", kRefusal);
  EXPECT_EQ(publisher->Publish(true), kRefusal);
  managers.RefuseNothing();
  managers.calls.clear();
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  // The service side names its library since the first try.
  EXPECT_EQ(managers.calls[0],
            "PublishRefList([{#1, \"/lp/native/a\", null, null, 0, 0, -1}"
            "{#2, \"/lp/native/b\", null, null, 0, 1, -1}], 2, true)");

  // Classes that are not to be registered are dropped.
  const Batch dropped(Module("c") + Class("app", "$6", "c"));
  ASSERT_EQ(dropped.AddTo(*publisher), kBtkOk);
  EXPECT_EQ(publisher->Publish(false), kBtkOk);
  managers.calls.clear();
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  EXPECT_EQ(managers.calls, std::vector<std::string>{"PublishRefList([], 0, true)"});
}

TEST(Publisher, AsksForMachineTypesWhereTheyMatter) {
  RecordingManagers managers;
  std::string asked;
  g_asked = &asked;
  const Batch batch(kFirstBatch);
  const PublisherPtr publisher = MakePublisher();
  EXPECT_EQ(publisher->Add(nullptr, 0, nullptr, 0, nullptr, 0), kBtkOk);
  EXPECT_EQ(asked, "");
  EXPECT_EQ(batch.AddTo(*publisher), kBtkOk);
  EXPECT_EQ(asked, "native ");
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  EXPECT_EQ(asked, "native native alternate ");
  g_asked = nullptr;
}

// The order of ids is the platform's own, whatever their bytes say.
TEST(Publisher, KeepsClassesInThePlatformsOrder) {
  g_lastIdFirst = true;
  std::deque<Batch> batches;
  const PublisherPtr publisher = MakePublisher();
  const auto add = [&](const std::string& ids, std::string fragment = "") {
    for (char id : ids)
      fragment += Class("app", std::string("$") + id, "a");
    return batches.emplace_back(fragment).AddTo(*publisher);
  };
  EXPECT_EQ(add("316", Module("a")), kBtkOk);
  EXPECT_EQ(add("524"), kBtkOk);
  for (const char* repeated : {"6", "73", "4", "1", "7987"})
    EXPECT_EQ(add(repeated), kBtkUnexpected) << repeated;
  std::string order;
  for (const MfIntfClassT* record : publisher->merged.classes)
    order += std::to_string(record->ids[kMfClientSide].bytes[15]);
  EXPECT_EQ(order, "654321");
  g_lastIdFirst = false;
}

}  // namespace
}  // namespace tarnmf::test
