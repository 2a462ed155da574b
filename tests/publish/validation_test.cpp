// Which batches are accepted.
#include "tests/publish/batch.h"
#include "tests/support/recording_managers.h"

namespace tarnmf::test {
namespace {

const std::string kA = Module("a");
const std::string kB = Module("b");
const std::string kC = Module("c");

std::string Class(const char* affinity, const char* id, const std::string& sides) {
  return std::string("<class id=\"") + id + "\" affinity=\"" + affinity + "\">" + sides +
         "</class>";
}
std::string Client(const char* module) {
  return std::string("<clientside moduleref=\"") + module + "\"/>";
}
std::string Agent(const char* module) {
  return std::string("<agentside moduleref=\"") + module + "\"/>";
}
std::string Service(const char* module) {
  return std::string("<serviceside svcid=\"$9\" moduleref=\"") + module + "\"/>";
}

TEST(Validation, AcceptsOrRefusesBatches) {
  const struct {
    const char* name;
    std::string earlier;  // accepted before; empty: none
    std::string batch;
    bool accepted;
  } rows[] = {
      {"nothing", "", "", true},
      {"modules", "", kA + kB, true},
      {"module twice in a batch", "", kA + kB + kA, false},
      {"module of an earlier batch", kA, kB + kA, false},
      {"machine type twice", "",
       "<module id=\"a\" name=\"a\"><platformmodule machinetype=\"x\" name=\"p\"/>"
       "<platformmodule machinetype=\"y\" name=\"q\"/><platformmodule machinetype=\"x\" "
       "name=\"r\"/></module>",
       false},

      {"app class", "", kA + Class("app", "$1", Client("a")), true},
      {"app class without a side", "", kA + Class("app", "$1", ""), false},
      {"agent class", "", kA + Class("agent", "$1", Agent("a")), true},
      {"agent class without a side", "", kA + Class("agent", "$1", ""), false},
      {"generic class with both sides", "",
       kA + kB + Class("generic", "$1", Client("a") + Agent("b")), true},
      {"generic class with an agent side only", "", kA + Class("generic", "$1", Agent("a")), false},
      {"service class with a service side only", "", kA + Class("service", "$1", Service("a")),
       true},
      {"service class with an agent side only", "", kA + Class("service", "$1", Agent("a")), false},
      {"service class with all sides", "",
       kA + kB + kC + Class("service", "$1", Client("a") + Service("b") + Agent("c")), true},

      {"unknown module", "", kA + Class("app", "$1", Client("b")), false},
      {"module of an earlier batch in a new role", kA, Class("app", "$1", Client("a")), false},
      {"module of an earlier batch in its role", kA + Class("app", "$1", Client("a")),
       Class("app", "$2", Client("a")), true},
      {"module filed as generic by a service class, then as such",
       kA + Class("service", "$1", Client("a")), Class("generic", "$2", Client("a")), true},
      {"generic module of an earlier batch as a service's",
       kA + Class("generic", "$1", Client("a")), Class("service", "$2", Client("a")), false},

      {"app and generic", "",
       kA + Class("app", "$1", Client("a")) + Class("generic", "$2", Client("a")), false},
      {"generic and app", "",
       kA + Class("generic", "$1", Client("a")) + Class("app", "$2", Client("a")), false},
      {"app and agent", "", kA + Class("app", "$1", Client("a")) + Class("agent", "$2", Agent("a")),
       false},
      {"agent and service", "",
       kA + Class("agent", "$1", Agent("a")) + Class("service", "$2", Service("a")), false},
      {"app and service across batches", kA + Class("app", "$1", Client("a")),
       Class("service", "$2", Client("a")), false},
      {"generic and service client", "",
       kA + Class("generic", "$1", Client("a")) + Class("service", "$2", Client("a")), true},
      {"generic and service server", "",
       kA + Class("service", "$1", Service("a")) + Class("generic", "$2", Client("a")), true},
      {"client of one service, server of another", "",
       kA + Class("service", "$1", Client("a")) + Class("service", "$2", Service("a")), false},
      {"client and server of one service", "",
       kA + Class("service", "$1", Client("a") + Service("a")), false},
      {"agent and client of one class", "", kA + Class("generic", "$1", Client("a") + Agent("a")),
       false},

      {"client completed by service", "",
       kA + kB + Class("service", "$1", Client("a")) + Class("service", "$1", Service("b")), true},
      {"service completed by client", kA + Class("service", "$1", Service("a")),
       kB + Class("service", "$1", Client("b")), true},
      {"completed twice", "",
       kA + kB + Class("service", "$1", Client("a")) + Class("service", "$1", Service("b")) +
           Class("service", "$1", Service("b")),
       false},
      {"client twice", "",
       kA + kB + Class("app", "$1", Client("a")) + Class("app", "$1", Client("b")), false},
      {"whole class twice", kA + kB + Class("service", "$1", Client("a") + Service("b")),
       kC + Class("service", "$1", Client("c")), false},
      {"agent side with both", "",
       kA + kB + kC + Class("service", "$1", Client("a") + Agent("c")) +
           Class("service", "$1", Service("b") + Agent("c")),
       false},
      {"agent side with the second", "",
       kA + kB + kC + Class("service", "$1", Client("a")) +
           Class("service", "$1", Service("b") + Agent("c")),
       true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Batch earlier(row.earlier);
    const Batch batch(row.batch);
    const PublisherPtr publisher = MakePublisher();
    ASSERT_EQ(earlier.AddTo(*publisher), kBtkOk);
    const int before = Count(publisher->merged);
    EXPECT_EQ(batch.AddTo(*publisher), row.accepted ? kBtkOk : kBtkUnexpected);
    EXPECT_EQ(Count(publisher->batch), 0);
    EXPECT_EQ(publisher->newModules.Count(),
              earlier.data.modules.count + (row.accepted ? batch.data.modules.count : 0));
    if (!row.accepted) {
      EXPECT_EQ(Count(publisher->merged), before);
    }
  }
}

TEST(Validation, MovesTheSidesOfACompletion) {
  const Batch batch(kA + kB + kC + Class("service", "$1", Service("a")) +
                    "<class id=\"$1\" affinity=\"service\"><clientside moduleref=\"b\" "
                    "multiplicity=\"perLdp\"/><agentside moduleref=\"c\"/></class>");
  const PublisherPtr publisher = MakePublisher();
  ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
  const MfIntfClassT& first = *batch.data.classes[0];
  const MfIntfClassT& second = *batch.data.classes[1];
  ASSERT_EQ(publisher->merged.classes.Count(), 1);
  EXPECT_EQ(publisher->merged.classes[0], &first);
  EXPECT_STREQ(first.sides[kMfClientSide].moduleref, "b");
  EXPECT_EQ(first.sides[kMfClientSide].multiplicity, kMfPerLdp);
  EXPECT_EQ(first.sides[kMfClientSide].flags, kMfSideMultiplicityGiven);
  EXPECT_STREQ(first.sides[kMfServiceSide].moduleref, "a");
  EXPECT_STREQ(first.sides[kMfAgentSide].moduleref, "c");
  EXPECT_EQ(IdText(first.ids[kMfServiceSide]), "#9");
  for (const MfIntfSideT& side : second.sides)
    EXPECT_EQ(side.moduleref, nullptr);
}

TEST(Validation, SelectsTheImplementationForTheMachine) {
  const MachineTypes machine("here", "there");
  const Batch batch(
      "<modules><module id=\"a\" name=\"a\"/><module id=\"b\" name=\"b\"><platformmodule "
      "machinetype=\"there\" name=\"x\"/><platformmodule machinetype=\"here\" name=\"x\"/></module>"
      "<module id=\"c\" name=\"c\"><platformmodule machinetype=\"Here\" name=\"x\"/></module>"
      "</modules>");
  const PublisherPtr publisher = MakePublisher();
  ASSERT_EQ(batch.AddTo(*publisher), kBtkOk);
  const int expected[] = {0, 2, 0};
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(batch.data.modules[i]->selectedImpl, batch.data.modules[i]->impls[expected[i]]);
}

TEST(Validation, ChecksItsArguments) {
  const Batch batch(kA);
  const PublisherPtr publisher = MakePublisher();
  EXPECT_EQ(publisher->Add(nullptr, 1, nullptr, 0, nullptr, 0), kBtkNullArgument);
  EXPECT_EQ(publisher->Add(nullptr, 0, nullptr, 1, nullptr, 0), kBtkNullArgument);
  EXPECT_EQ(publisher->Add(nullptr, 0, batch.data.modules.items, 1, nullptr, 1), kBtkNullArgument);
  EXPECT_EQ(batch.data.modules[0]->selectedImpl, nullptr);
  auto** const unreadable = reinterpret_cast<MfModuleT**>(16);
  EXPECT_EQ(publisher->Add(nullptr, -1, unreadable, -1, nullptr, 0), kBtkOk);
  MfModuleT empty;
  MfModuleT* const modules[] = {&empty};
  EXPECT_EQ(publisher->Add(nullptr, 0, const_cast<MfModuleT**>(modules), 1, nullptr, 0),
            kBtkUnexpected);
  EXPECT_EQ(batch.AddTo(*publisher), kBtkOk);
}

}  // namespace
}  // namespace tarnmf::test
