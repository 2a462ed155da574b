// SPDX-License-Identifier: Apache-2.0
// What is registered with the managers, call by call.
#include <cstdlib>

#include "tests/publish/batch.h"
#include "tests/support/case_file.h"
#include "tests/support/environment.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {
namespace {

using CallList = std::vector<std::string>;

class RegistrationTest : public testing::Test {
 protected:
  RegistrationTest() {
    managers_.machineVariant = [](auto* path, auto*) { return path[1] == BTK_W('b'); };
  }

  CallList Publish(const Batch& batch, IntfDispositionT view = kIntfAgentView,
                   BtkErrorT expected = kBtkOk) {
    const PublisherPtr publisher = MakePublisher(view);
    EXPECT_EQ(batch.AddTo(*publisher), kBtkOk);
    managers_.calls.clear();
    EXPECT_EQ(publisher->Publish(true), expected);
    return managers_.calls;
  }

  const std::vector<FileCase> cases_ = ReadCaseFile(TARNMF_CASES "/registration.cases");
  const Batch runnables_{cases_.back().input};
  RecordingManagers managers_;
};

TEST_F(RegistrationTest, MakesTheseCalls) {
  managers_.Refuse("ResolveModule(\"fallback\", null, \"bad\"", kRefusal);
  managers_.Refuse("ResolveModule(\"lost\"", kRefusal);
  for (const FileCase& row : cases_) {
    const Batch batch(row.input);
    const bool inClientView = row.input.starts_with("<!-- client view");
    std::string actual;
    for (const std::string& call :
         Publish(batch, inClientView ? static_cast<IntfDispositionT>(0) : kIntfAgentView))
      actual += call + "\n";
    EXPECT_EQ(actual + Dump(batch.data), row.result) << row.name;
  }
}

TEST_F(RegistrationTest, TreatsTheDebugServiceLikeASingleInstance) {
  const CallList calls = Publish(runnables_);
  CallList expected = calls;
  expected[8].replace(expected[8].find(", 2, 0, 0, 0)"), 4, ", 1,");
  expected[9] = "SetServiceInfo(#2, \"\", \"two\", 3, 8)";
  expected.insert(expected.begin() + 10, "AddServiceInstance(null, #2, \"\", \"\", 0)");
  SetVariable("TARN_SERVICE_MI_DEBUG", "00000000-0000-0000-0000-000000000002");
  EXPECT_EQ(Publish(runnables_), expected);
  SetVariable("TARN_SERVICE_MI_DEBUG", "00000000000000000000000000000002");
  EXPECT_EQ(Publish(runnables_), calls);
  SetVariable("TARN_SERVICE_MI_DEBUG", nullptr);
}

TEST_F(RegistrationTest, EndsAtTheFirstRefusal) {
  const CallList calls = Publish(runnables_);
  // An instance that is there already is none.
  managers_.Refuse("AddServiceInstance", kBtkDuplicate);
  EXPECT_EQ(Publish(runnables_), calls);
  for (std::size_t i = 0; i < calls.size(); ++i) {
    SCOPED_TRACE(calls[i]);
    managers_.RefuseNothing();
    managers_.Refuse(calls[i], kRefusal);
    // Whether a service can be started is not for the publisher to say.
    const bool goesOn = calls[i].starts_with("RegisterRunnable(\"0000");
    CallList expected = calls;
    if (!goesOn) expected.resize(i + 1);
    EXPECT_EQ(Publish(runnables_, kIntfAgentView, goesOn ? kBtkOk : kRefusal), expected);
  }
}

}  // namespace
}  // namespace tarnmf::test
