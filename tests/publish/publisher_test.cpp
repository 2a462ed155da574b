// What a publisher keeps for the next time, and what a failure leaves.
#include <cstring>
#include <deque>

#include "platform/runtime.h"
#include "support/ignore_refusal.h"
#include "tests/publish/batch.h"
#include "tests/support/allocation_fault.h"

// This program has its own functions in place of the host layer's. They note what is asked, and the
// question with this number throws.
static std::string* g_asked = nullptr;
static int g_throwAt = -1;
static bool g_lastIdFirst = false;

static const char* Answer(const char* question, const char* answer) {
  if (g_asked != nullptr) *g_asked += question;
  if (g_throwAt-- == 0) throw tarnmf::test::PlatformException("the platform");
  return answer;
}
const char* btkGetVexMachine() {
  return Answer("native ", "here");
}
const char* btkGetVexMachine3264(const char* /*machine*/) {
  return Answer("alternate ", "there");
}
int btkUniIdCompare(const UniIdT* left, const UniIdT* right) {
  Answer("", "");
  const int order = std::memcmp(left->bytes, right->bytes, sizeof left->bytes);
  return g_lastIdFirst ? -order : order;
}

namespace tarnmf::test {
namespace {

constexpr char kAll[] = R"(<module id='a' name='a' loadpoint='/lp'>
<platformmodule machinetype='x' name='b'/><platformmodule machinetype='y' name='c'/></module>
<module id='b' name='b' loadpoint='/lp'/><class id='$1' affinity='service'><clientside moduleref='a'
/></class><class id='$1' affinity='service'><serviceside moduleref='b' svcid='$2'/></class>
<runnable moduleref='a'><service id='$3' commonname='s'/><app nameid='x'/></runnable>)";

// How many modules, classes and runnables wait for the next Publish.
std::string Pending(const liMfPublisherImpl& publisher) {
  return std::to_string(publisher.newModules.Count()) + " " +
         std::to_string(publisher.newClasses.Count()) + " " +
         std::to_string(publisher.newRunnables.Count());
}

TEST(Publisher, RetriesWhatHasNotBeenRegistered) {
  RecordingManagers managers;
  const Batch batch(kAll);
  const PublisherPtr publisher = MakePublisher();
  ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
  btkHostSetDlmManager(nullptr);
  EXPECT_EQ(publisher->Publish(true), kBtkNotReady);
  EXPECT_EQ(Pending(*publisher), "2 2 1");
  btkHostSetDlmManager(&managers);

  managers.Refuse("PublishRefList", kRefusal);
  EXPECT_EQ(publisher->Publish(true), kRefusal);
  EXPECT_EQ(Pending(*publisher), "0 2 1");
  managers.RefuseNothing();

  btkHostSetServiceManager(nullptr);
  managers.calls.clear();
  EXPECT_EQ(publisher->Publish(true), kBtkMissing);
  EXPECT_EQ(Pending(*publisher), "0 0 1");
  // The service side names its library since the first try.
  EXPECT_EQ(managers.calls[0],
            "PublishRefList([{#1, \"/lp/native/a\", null, null, 0, 0, -1}"
            "{#2, \"/lp/native/b\", null, null, 0, 1, -1}], 2, true)");
  btkHostSetServiceManager(&managers);

  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  EXPECT_EQ(Pending(*publisher), "0 0 0");

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
  const Batch batch(kAll);
  const PublisherPtr publisher = MakePublisher();
  EXPECT_EQ(publisher->Add(nullptr, 0, nullptr, 0, nullptr, 0), kBtkOk);
  EXPECT_EQ(asked, "");
  EXPECT_EQ(batch.AddTo(*publisher), kBtkOk);
  EXPECT_EQ(asked, "native ");
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  EXPECT_EQ(asked, "native native alternate ");
  g_asked = nullptr;
}

TEST(Publisher, StandsEveryFailedAllocation) {
  const Batch first(kAll);  // what the XML library keeps from its first document is there now
  int refused = 0;
  const auto work = [&](AllocationFault& fault) {
    RecordingManagers managers;
    const Batch batch(kAll);
    const Batch again(kAll);  // records whose sides have not been moved
    liMfPublisher* made = nullptr;
    fault.Arm();
    const BtkErrorT created = liMfPublisher::CreateNew(&made, kIntfAgentView);
    EXPECT_EQ(created, fault.Hit() ? kBtkNoMemory : kBtkOk);
    if (made == nullptr) return;
    const PublisherPtr publisher(static_cast<liMfPublisherImpl*>(made));
    if (const BtkErrorT added = batch.AddTo(*publisher)) {
      // Memory that runs out within the checks shows as a refused batch.
      EXPECT_TRUE(added == kBtkNoMemory || added == kBtkUnexpected) << added;
      EXPECT_EQ(Count(publisher->batch) + Count(publisher->merged), 0);
      EXPECT_EQ(Pending(*publisher), "0 0 0");
      EXPECT_EQ(again.AddTo(*publisher), kBtkOk);
      ++refused;
    }
    if (const BtkErrorT published = publisher->Publish(true)) {
      EXPECT_EQ(published, kBtkNoMemory);
      EXPECT_EQ(publisher->Publish(true), kBtkOk);
    }
    EXPECT_EQ(Pending(*publisher), "0 0 0");
  };
  for (const auto source : kReportedSources)
    SweepAllocations(source, work);
  EXPECT_GT(refused, 10);
}

// Questions of Add throw one after the other, and so do the eight calls that Publish makes.
TEST(Publisher, CanTryAgainAfterAnExceptionOfThePlatform) {
  RecordingManagers managers;
  const std::string text = Module("d") + Module("e") + Module("f") + Class("app", "$8", "d") +
                           Class("app", "$3", "d") + Class("service", "$5", "e") +
                           Class("service", "$5", "", "f") + Class("app", "$6", "d");
  int thrown = 0;  // questions
  for (int n = 0; n == thrown; ++n) {
    const Batch first(kAll + Module("c") + Class("app", "$4", "c") + Class("app", "$7", "c"));
    const Batch batch(text);
    const Batch again(text);  // records whose sides have not been moved
    const PublisherPtr publisher = MakePublisher();
    ASSERT_EQ(first.AddTo(*publisher), kBtkOk);
    g_throwAt = n;
    try {
      EXPECT_EQ(batch.AddTo(*publisher), kBtkOk);
    } catch (const PlatformException&) {
      ++thrown;
      EXPECT_EQ(Count(publisher->batch) + Count(publisher->merged), 11) << n;
      EXPECT_EQ(Pending(*publisher), "3 4 1");
      EXPECT_EQ(again.AddTo(*publisher), kBtkOk);
    }
    g_throwAt = -1;
    managers.ThrowAt(n % 8);
    EXPECT_THROW(IgnoreRefusal(publisher->Publish(true)), PlatformException);
    EXPECT_EQ(publisher->Publish(true), kBtkOk);
    EXPECT_EQ(Pending(*publisher), "0 0 0");
  }
  EXPECT_GT(thrown, 15);
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
