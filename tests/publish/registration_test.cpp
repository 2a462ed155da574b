// What is registered with the managers, call by call.
#include <cstdlib>
#include <gmock/gmock.h>

#include "tests/publish/batch.h"
#include "tests/support/recording_managers.h"

namespace tarnmf::test {
namespace {

using testing::ElementsAre;
using CallList = std::vector<std::string>;

constexpr auto kRefusal = static_cast<BtkErrorT>(77);

// One machine type, so that no module has a second variant.
class RegistrationTest : public testing::Test {
 protected:
  CallList Publish(const Batch& batch, IntfDispositionT view = kIntfAgentView,
                   BtkErrorT expected = kBtkOk) {
    const PublisherPtr publisher = MakePublisher(view);
    EXPECT_EQ(batch.AddTo(*publisher), kBtkOk);
    managers_.calls.clear();
    EXPECT_EQ(publisher->Publish(true), expected);
    return managers_.calls;
  }

  const MachineTypes machine_{"here", "here"};
  RecordingManagers managers_;
};

TEST_F(RegistrationTest, ResolvesModules) {
  const Batch batch(
      "<modules><module id=\"own\" name=\"n\" path=\"p\" loadpoint=\"/lp\" apilevel=\"3\" "
      "abits=\"64\" forcepath=\"yes\" explicitname=\"yes\"/>"
      "<module id=\"homeless\" name=\"n\" loadpoint=\"\"/>"
      "<module id=\"two\" name=\"n\" loadpoint=\"/lp\"><platformmodule machinetype=\"here\" "
      "name=\"m\"/></module>"
      "<module id=\"fallback\" name=\"n\" loadpoint=\"/lp\"><platformmodule machinetype=\"here\" "
      "name=\"bad\"/></module>"
      "<module id=\"lost\" name=\"bad\" loadpoint=\"/lp\"/></modules>");
  managers_.Refuse("ResolveModule(\"fallback\", null, \"bad\"", kRefusal);
  managers_.Refuse("ResolveModule(\"lost\"", kRefusal);
  EXPECT_THAT(
      Publish(batch),
      ElementsAre(
          "ResolveModule(\"own\", null, \"n\", \"p\", 3, \"/lp\", \"\", 64, v1.0.0.0.api3)",
          "ResolveModule(\"homeless\", null, \"n\", null, 0, null, null, 0, v1.0.0.0.api0)",
          "ResolveModule(\"two\", null, \"m\", null, 0, \"/lp\", \"\", 0, v0.0.0.0.api0)",
          "ResolveModule(\"fallback\", null, \"bad\", null, 0, \"/lp\", \"\", 0, v0.0.0.0.api0)",
          "ResolveModule(\"fallback\", null, \"n\", null, 0, \"/lp\", \"\", 0, v1.0.0.0.api0)",
          "ResolveModule(\"lost\", null, \"bad\", null, 0, \"/lp\", \"\", 0, v1.0.0.0.api0)",
          "PublishRefList([], 0, true)"));
  const MfListT<MfModuleT>& modules = batch.data.modules;
  EXPECT_STREQ(modules[0]->impls[0]->resolvedPath, "/lp/native/n");
  EXPECT_EQ(modules[1]->impls[0]->resolvedPath, nullptr);
  EXPECT_STREQ(modules[2]->impls[1]->resolvedPath, "/lp/native/m");
  EXPECT_EQ(modules[3]->selectedImpl, modules[3]->impls[0]);
  EXPECT_STREQ(modules[3]->impls[0]->resolvedPath, "/lp/native/n");
  EXPECT_EQ(modules[3]->impls[1]->resolvedPath, nullptr);
  EXPECT_EQ(modules[4]->impls[0]->resolvedPath, nullptr);
}

TEST_F(RegistrationTest, ResolvesExecutablesForTheOtherMachineToo) {
  const MachineTypes machines("here", "there");
  managers_.machineVariant = [](const btkWChar* loadpoint, const char*) {
    return loadpoint != nullptr && loadpoint[1] == BTK_W('l');
  };
  const std::string platform = "<platformmodule machinetype=\"there\" name=\"t\"/>";
  const Batch batch("<modules><module id=\"a\" name=\"n\" type=\"Executable\" loadpoint=\"/l\">" +
                    platform +
                    "</module><module id=\"b\" name=\"n\" type=\"executable\" loadpoint=\"/l\"/>"
                    "<module id=\"c\" name=\"n\" type=\"executable\" loadpoint=\"/x\">" +
                    platform + "</module><module id=\"d\" name=\"n\" loadpoint=\"/l\">" + platform +
                    "</module></modules>");
  EXPECT_THAT(
      Publish(batch),
      ElementsAre(
          "ResolveModule(\"a\", \"Executable\", \"n\", null, 0, \"/l\", \"\", 0, v1.0.0.0.api0)",
          "HasMachineVariant(\"/l\", \"there\")",
          "ResolveModule(\"a\", \"Executable\", \"t\", null, 0, \"/l\", \"there\", 0, "
          "v0.0.0.0.api0)",
          "ResolveModule(\"b\", \"executable\", \"n\", null, 0, \"/l\", \"\", 0, v1.0.0.0.api0)",
          "HasMachineVariant(\"/l\", \"there\")",
          "ResolveModule(\"b\", \"executable\", \"n\", null, 0, \"/l\", \"there\", 0, "
          "v1.0.0.0.api0)",
          "ResolveModule(\"c\", \"executable\", \"n\", null, 0, \"/x\", \"\", 0, v1.0.0.0.api0)",
          "HasMachineVariant(\"/x\", \"there\")",
          "ResolveModule(\"d\", null, \"n\", null, 0, \"/l\", \"\", 0, v1.0.0.0.api0)",
          "PublishRefList([], 0, true)"));
  EXPECT_STREQ(batch.data.modules[0]->impls[1]->resolvedPath, "/l/there/t");
  EXPECT_STREQ(batch.data.modules[1]->impls[0]->resolvedPath, "/l/native/n");
}

// All kinds of classes; modules c and s are resolved, the others go by their ids.
constexpr char kClasses[] =
    "<modules><module id=\"c\" name=\"c\" loadpoint=\"/lp\"/><module id=\"s\" name=\"s\" "
    "loadpoint=\"/lp\"/><module id=\"p\" name=\"p\" loadpoint=\"\"/><module id=\"g\" name=\"g\" "
    "loadpoint=\"\"/><module id=\"ga\" name=\"ga\" loadpoint=\"\"/><module id=\"a\" name=\"a\" "
    "loadpoint=\"\"/></modules><classes>"
    "<class id=\"$1\" affinity=\"service\" commonname=\"S\" displayname=\"DS\" version=\"7\">"
    "<clientside moduleref=\"c\" multiplicity=\"perProcess\"/>"
    "<serviceside moduleref=\"s\" svcid=\"$2\" multiplicity=\"perProcess\"/></class>"
    "<class id=\"$3\" affinity=\"generic\"><clientside moduleref=\"g\"/></class>"
    "<class id=\"$4\" affinity=\"generic\" commonname=\"GA\"><clientside moduleref=\"g\"/>"
    "<agentside moduleref=\"ga\" multiplicity=\"singleInstance\"/></class>"
    "<class id=\"$5\" affinity=\"agent\"><agentside moduleref=\"a\"/></class>"
    "<class id=\"$6\" affinity=\"app\" version=\"32767\"><clientside moduleref=\"p\"/></class>"
    "<class id=\"$7\" affinity=\"service\" managedtype=\"worker\"><serviceside moduleref=\"s\"/>"
    "</class></classes>";

TEST_F(RegistrationTest, RegistersTheAgentView) {
  const Batch batch(kClasses);
  EXPECT_EQ(Publish(batch).back(),
            "PublishRefList([{#4, \"ga\", \"GA\", null, 0, 1, -2}"
            "{#5, \"a\", null, null, 0, 0, -1}"
            "{#3, \"g\", null, null, 0, 0, -1}"
            "{#1, \"/lp/native/c\", \"S\", \"DS\", 7, 1, -2}"
            "{#2, \"/lp/native/s\", null, \"DS\", 0, 0, -2}"
            "{#7, \"/lp/native/s\", null, null, 0, 1, -1}], 6, true)");
  EXPECT_STREQ(batch.data.classes[0]->sides[kMfServiceSide].moduleref, "/lp/native/s");
  EXPECT_STREQ(batch.data.classes[0]->sides[kMfClientSide].moduleref, "c");
}

TEST_F(RegistrationTest, RegistersTheClientView) {
  const Batch batch(kClasses);
  EXPECT_EQ(Publish(batch, static_cast<IntfDispositionT>(0)).back(),
            "PublishRefList([{#6, \"p\", null, null, 32767, 0, -1}"
            "{#3, \"g\", null, null, 0, 0, -1}{#4, \"g\", \"GA\", null, 0, 0, -1}"
            "{#1, \"/lp/native/c\", \"S\", \"DS\", 7, 1, -2}], 4, true)");
  EXPECT_STREQ(batch.data.classes[0]->sides[kMfServiceSide].moduleref, "s");
}

constexpr char kRunnables[] =
    "<runnable moduleref=\"m\"><service id=\"$1\" commonname=\"one\" version=\"65537\" "
    "recover=\"yes\" launcher=\"l\"/><app nameid=\"a\" launcher=\"l\"><args><arg>x 'y "
    "z'</arg></args>"
    "<env initstate=\"clean\"><set name=\"A\">b</set><unset name=\"C\"/></env></app>"
    "<launcher nameid=\"l\" types=\"t\"/></runnable>"
    "<runnable moduleref=\"n\"><service id=\"$2\" multiplicity=\"perProcess\" recover=\"yes\" "
    "commonname=\"two\" version=\"3\"/><service id=\"$3\" multiplicity=\"perLdp\" "
    "managedtype=\"worker\"/><service id=\"$4\" managedtype=\"container\"/></runnable>";

std::string IdLine(int number) {
  return "\"0000000000000000000000000000000" + std::to_string(number) + "\"";
}

CallList RunnableCalls() {
  const std::string generic = "baabdcd0-761a-4c0e-897a-a178df848ab9";
  const std::string container = "001da285-000f-4aba-8c7d-b7d248e77755";
  return {
      "PublishRefList([], 0, true)",
      "RegisterRunnable(\"l\", \"m\", null, \"\", 0, null, [], 0)",
      "RegisterRunnable(\"a\", \"m\", \"l\", \"\", 0, [\"x\", \"y z\"], "
      "[{1, 1, \"A\", \"b\"}{2, 1, \"C\", null}], 1)",
      "RegisterRunnable(" + IdLine(1) + ", \"m\", \"l\", \"\", 0, null, [], 0)",
      "DefineService(#1, \"\", " + IdLine(1) + ", " + generic + ", 3, 0, 0, 0)",
      "SetServiceInfo(#1, \"\", \"one\", 1, 8)",
      "AddServiceInstance(null, #1, \"\", \"\", 0)",
      "RegisterRunnable(" + IdLine(2) + ", \"n\", null, \"\", 0, null, [], 0)",
      "DefineService(#2, \"\", " + IdLine(2) + ", " + generic + ", 2, 0, 0, 0)",
      "SetServiceInfo(#2, \"\", \"two\", 3, 0)",
      "RegisterRunnable(" + IdLine(3) + ", \"n\", null, \"\", 0, null, [], 0)",
      "DefineService(#3, \"\", " + IdLine(3) + ", #0, 0, 0, 0, 0)",
      "RegisterRunnable(" + IdLine(4) + ", \"n\", null, \"\", 0, null, [], 0)",
      "DefineService(#4, \"\", " + IdLine(4) + ", " + container + ", 0, 0, 0, 0)",
  };
}

TEST_F(RegistrationTest, RegistersRunnables) {
  const Batch batch(kRunnables);
  EXPECT_EQ(Publish(batch), RunnableCalls());
  // An instance that exists already, and a service that cannot be started, are no failures.
  managers_.Refuse("AddServiceInstance", kBtkDuplicate);
  managers_.Refuse("RegisterRunnable(" + IdLine(1), kRefusal);
  EXPECT_EQ(Publish(batch), RunnableCalls());
}

TEST_F(RegistrationTest, TreatsTheDebugServiceLikeASingleInstance) {
  const Batch batch(kRunnables);
  CallList expected = RunnableCalls();
  setenv("TARN_SERVICE_MI_DEBUG", "00000000-0000-0000-0000-000000000002", 1);
  expected[8].replace(expected[8].find(", 2, 0, 0, 0)"), 4, ", 1,");
  expected[9] = "SetServiceInfo(#2, \"\", \"two\", 3, 8)";
  expected.insert(expected.begin() + 10, "AddServiceInstance(null, #2, \"\", \"\", 0)");
  EXPECT_EQ(Publish(batch), expected);
  setenv("TARN_SERVICE_MI_DEBUG", "00000000000000000000000000000002", 1);
  EXPECT_EQ(Publish(batch), RunnableCalls());
  unsetenv("TARN_SERVICE_MI_DEBUG");
}

TEST_F(RegistrationTest, EndsAtTheFirstRefusal) {
  const Batch batch(kRunnables);
  for (const char* refused :
       {"RegisterRunnable(\"l\"", "RegisterRunnable(\"a\"", "DefineService(#1", "SetServiceInfo(#1",
        "AddServiceInstance", "DefineService(#2", "SetServiceInfo(#2", "DefineService(#4"}) {
    SCOPED_TRACE(refused);
    managers_.RefuseNothing();
    managers_.Refuse(refused, kRefusal);
    CallList expected = RunnableCalls();
    while (!expected.back().starts_with(refused))
      expected.pop_back();
    EXPECT_EQ(Publish(batch, kIntfAgentView, kRefusal), expected);
  }
}

}  // namespace
}  // namespace tarnmf::test
