// What a publisher keeps for the next time, and what a failure leaves.
#include "tests/publish/batch.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/recording_managers.h"

namespace tarnmf::test {
namespace {

constexpr auto kRefusal = static_cast<BtkErrorT>(77);

constexpr char kAll[] =
    "<module id=\"a\" name=\"a\" loadpoint=\"/lp\"><platformmodule machinetype=\"x\" name=\"b\"/>"
    "<platformmodule machinetype=\"y\" name=\"c\"/></module><module id=\"b\" name=\"b\" "
    "loadpoint=\"/lp\"/><class id=\"$1\" affinity=\"service\"><clientside moduleref=\"a\"/></class>"
    "<class id=\"$1\" affinity=\"service\"><serviceside moduleref=\"b\" svcid=\"$2\"/></class>"
    "<runnable moduleref=\"a\"><service id=\"$3\" commonname=\"s\"/><app nameid=\"x\"/></runnable>";

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
  EXPECT_EQ(Pending(*publisher), "2 2 1");

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
  managers.calls.clear();
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  EXPECT_EQ(managers.calls, std::vector<std::string>{"PublishRefList([], 0, true)"});
}

TEST(Publisher, DropsTheClassesThatItIsNotToRegister) {
  RecordingManagers managers;
  const Batch batch(kAll);
  const PublisherPtr publisher = MakePublisher();
  ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
  EXPECT_EQ(publisher->Publish(false), kBtkOk);
  EXPECT_EQ(Pending(*publisher), "0 0 0");
  managers.calls.clear();
  EXPECT_EQ(publisher->Publish(true), kBtkOk);
  EXPECT_EQ(managers.calls, std::vector<std::string>{"PublishRefList([], 0, true)"});
}

TEST(Publisher, StandsEveryFailedAllocation) {
  RecordingManagers managers;
  for (const auto source : {AllocationFault::kPlatform, AllocationFault::kOperatorNew}) {
    bool failed = true;
    int reported = 0;
    for (int n = 0; failed; ++n) {
      const Batch batch(kAll);
      managers.calls.clear();
      managers.calls.shrink_to_fit();
      const std::int64_t before = LiveAllocations();
      std::int64_t kept = 0;
      {
        AllocationFault fault(source, n);
        fault.Arm();
        liMfPublisher* made = nullptr;
        const BtkErrorT created = liMfPublisher::CreateNew(&made, kIntfAgentView);
        if (created != kBtkOk) {
          EXPECT_EQ(created, kBtkNoMemory);
          EXPECT_EQ(made, nullptr);
          ++reported;
          continue;
        }
        const PublisherPtr publisher(static_cast<liMfPublisherImpl*>(made));
        const BtkErrorT added = batch.AddTo(*publisher);
        if (added != kBtkOk) {
          // Memory that ends inside the checks shows as a refused batch.
          EXPECT_TRUE(added == kBtkNoMemory || added == kBtkUnexpected) << added;
          EXPECT_EQ(Count(publisher->batch), 0);
          EXPECT_EQ(Count(publisher->merged), 0);
          EXPECT_EQ(Pending(*publisher), "0 0 0");
        }
        const BtkErrorT published = added == kBtkOk ? publisher->Publish(true) : kBtkOk;
        EXPECT_TRUE(published == kBtkOk || published == kBtkNoMemory) << published;
        failed = fault.Hit();
        if (added != kBtkOk || published != kBtkOk) ++reported;
        managers.calls.clear();
        managers.calls.shrink_to_fit();
        // A second try goes on as if nothing had happened. A moved side has to be given back first.
        if (added == kBtkOk) {
          EXPECT_EQ(publisher->Publish(true), kBtkOk);
          EXPECT_EQ(Pending(*publisher), "0 0 0");
        }
        managers.calls.clear();
        managers.calls.shrink_to_fit();
        for (const MfModuleT* module : batch.data.modules) {
          for (const MfModuleImplT* impl : module->impls)
            kept += impl->resolvedPath != nullptr;
        }
      }
      ASSERT_EQ(LiveAllocations(), before + kept) << "allocation " << n;
    }
    EXPECT_GT(reported, source == AllocationFault::kPlatform ? 8 : 0);
  }
}

TEST(Publisher, LetsExceptionsOfThePlatformThrough) {
  RecordingManagers managers;
  for (int n = 0;; ++n) {
    const Batch batch(kAll);
    const PublisherPtr publisher = MakePublisher();
    ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
    managers.calls.clear();
    managers.ThrowAt(n);
    bool thrown = false;
    try {
      EXPECT_EQ(publisher->Publish(true), kBtkOk);
    } catch (const PlatformException&) {
      thrown = true;
    }
    managers.ThrowAt(-1);
    if (!thrown) {
      EXPECT_GT(n, 6);
      break;
    }
    EXPECT_EQ(publisher->Publish(true), kBtkOk) << "call " << n;
    EXPECT_EQ(Pending(*publisher), "0 0 0");
  }
}

}  // namespace
}  // namespace tarnmf::test
