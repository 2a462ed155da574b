#include "tests/xml/parse.h"

#if defined(__unix__)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tarnmf::test {
namespace {

TEST(ClassElement, ReadsAttributesAndSides) {
  const Case cases[] = {
      {"least", R"(<class id="$1"/>)", kBtkOk, "class id=$1\n"},
      {"attributes",
       R"(<class id="$1" affinity="App" commonname="c" displayname="d" version="32767"
                 createon="x" CREATEON="y" managedtype="generic"/>)",
       kBtkOk, "class id=$1 commonname=\"c\" version=32767 affinity=1 displayname=\"d\"\n"},
      {"all sides",
       R"(<class id="$1" affinity="service" commonname=""><clientside moduleref="a"/>
            <agentside moduleref="b" multiplicity="perLdp"/>
            <serviceside moduleref="c" svcid="$2" xsid="$3" isolation="strict" exposed="yes"
                         multiplicity="alwaysNew"/></class>)",
       kBtkOk,
       "class id=$1 svcid=$2 commonname=\"\" affinity=3 xsid=$3 isolation=1 exposed=1\n"
       "  client moduleref=\"a\"\n  service moduleref=\"c\" flags=1\n"
       "  agent moduleref=\"b\" multiplicity=3 flags=1\n"},
      {"nested module with an id",
       R"(<class id="$1"><clientside multiplicity="perProcess"> <!--c-->
            <module id="m" name="n"><preload name="x"/></module></clientside></class>)",
       kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+\n"
       "    preload by=2 name=\"x\"\n"
       "class id=$1\n  client moduleref=\"m\" multiplicity=2 flags=1\n"},
      {"sides with text and no module",
       R"(<class id="$1"><clientside multiplicity="singleInstance"> </clientside>
            <agentside multiplicity="alwaysNew"><!--c--></agentside></class>)",
       kBtkOk, "class id=$1\n  client multiplicity=1 flags=1\n  agent flags=1\n"},
      {"names may be empty", R"(<class id="$1" commonname="" displayname=""/>)", kBtkOk,
       "class id=$1 commonname=\"\" displayname=\"\"\n"},
      {"every attribute of a service side",
       R"(<class id="$1" affinity="service" managedtype="worker"><serviceside moduleref="m"
            svcid="$2" xsname="" xsversion="-7" exposed="no" multiplicity="PERPROCESS"/></class>)",
       kBtkOk,
       "class id=$1 svcid=$2 affinity=3 xsname=\"\" xsversion=-7 managedtype=2\n"
       "  service moduleref=\"m\" multiplicity=2 flags=1\n"},
      {"instruction between sides", R"(<class id="$1"><?p i?><clientside moduleref="a"/></class>)",
       kBtkUnexpected, ""},
      {"nested module of a type that is the default",
       R"(<class id="$1"><agentside multiplicity="perLdp"><module id="m" name="n" type="SharedLIB"
            loadpoint="l"><platformmodule machinetype="a" apilevel="1"/></module></agentside>
          </class>)",
       kBtkOk,
       "module id=\"m\" loadpoint=\"l\"+\n  impl name=\"n\"+\n"
       "  impl machinetype=\"a\" name=\"n\" apilevel=1\n"
       "class id=$1\n  agent moduleref=\"m\" multiplicity=3 flags=1\n"},
      {"no id", R"(<class commonname="c"/>)", kBtkMissing, ""},
      {"no attribute", "<class/>", kBtkMissing, ""},
      {"display name alone", R"(<class id="$1" displayname="d"/>)", kBtkMissing, ""},
      {"unknown child", R"(<class id="$1"><side/></class>)", kBtkUnexpected, ""},
      {"client side of an agent class",
       R"(<class id="$1" affinity="agent"><clientside moduleref="a"/></class>)", kBtkForbidden, ""},
      {"agent side of an app class",
       R"(<class id="$1" affinity="app"><agentside moduleref="a"/></class>)", kBtkForbidden, ""},
      {"second client side",
       R"(<class id="$1"><clientside moduleref="a"/><clientside moduleref="b"/></class>)",
       kBtkDuplicate, ""},
      {"side without attributes", R"(<class id="$1"><clientside/></class>)", kBtkMissing, ""},
      {"side without module", R"(<class id="$1"><clientside multiplicity="perLdp"/></class>)",
       kBtkMissing, ""},
      {"space inside a side with moduleref",
       R"(<class id="$1"><clientside moduleref="a"> </clientside></class>)", kBtkDuplicate, ""},
      {"nested module without any attribute of the side",
       R"(<class id="$1"><clientside><module name="n"/></clientside></class>)", kBtkMissing, ""},
      {"two nested modules",
       R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n"/>
            <module name="o"/></clientside></class>)",
       kBtkDuplicate, ""},
      {"nested module of another type",
       R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n" type="executable"/>
            </clientside></class>)",
       kBtkNotSharedLib, ""},
  };
  ExpectAll(cases);
}

// Service sides of a plain service class and of a worker: what is given, and what follows.
TEST(ServiceSideElement, ChecksCombinations) {
  const struct {
    const char* attributes;
    const char* content;
    BtkErrorT plain;
    BtkErrorT worker;
  } rows[] = {
      {R"(moduleref="m" svcid="$2")", nullptr, kBtkOk, kBtkOk},
      {R"(moduleref="m")", nullptr, kBtkMissing, kBtkOk},
      {R"(xsid="$3")", nullptr, kBtkOk, kBtkOk},
      {R"(svcid="$2")", nullptr, kBtkMissing, kBtkMissing},
      {R"(svcid="$2" xsid="$3")", nullptr, kBtkOk, kBtkOk},
      {R"(moduleref="m" xsid="$3")", nullptr, kBtkMissing, kBtkOk},
      {R"(multiplicity="perLdp")", nullptr, kBtkMissing, kBtkMissing},
      {R"(svcid="$2")", R"(<module id="m" name="n"/>)", kBtkOk, kBtkOk},
      {R"(svcid="$2")", " ", kBtkOk, kBtkOk},
      {R"(xsid="$3")", R"(<module id="m" name="n"/>)", kBtkMissing, kBtkOk},
      {R"(xsid="$3")", " ", kBtkMissing, kBtkOk},
      {R"(svcid="$2" moduleref="m")", " ", kBtkDuplicate, kBtkDuplicate},
      {R"(moduleref="m" svcid="$2" isolation="strict")", nullptr, kBtkForbidden, kBtkForbidden},
      {R"(isolation="strict")", nullptr, kBtkMissing, kBtkForbidden},
      {R"(moduleref="m" svcid="$2" xsversion="3")", nullptr, kBtkForbidden, kBtkForbidden},
      {R"(moduleref="m" svcid="$2" xsname="x" xsversion="3")", nullptr, kBtkOk, kBtkOk},
      {R"(moduleref="m" svcid="$2" xsname="x" xsid="$3")", nullptr, kBtkForbidden, kBtkForbidden},
      {R"(xsname="x")", nullptr, kBtkMissing, kBtkMissing},
      {"", nullptr, kBtkMissing, kBtkMissing},
  };
  for (const auto& row : rows) {
    const std::string side =
        std::string("<serviceside ") + row.attributes +
        (row.content != nullptr ? std::string(">") + row.content + "</serviceside>" : "/>");
    for (const bool worker : {false, true}) {
      SCOPED_TRACE(side + (worker ? " worker" : " plain"));
      MfLdpDataT data;
      const std::string document =
          InRoot(WithIds(std::string(R"(<class id="$1" affinity="service" managedtype=")") +
                         (worker ? "worker" : "generic") + "\">" + side + "</class>"));
      ASSERT_EQ(Parse(document, data), worker ? row.worker : row.plain);
      if (data.classes.count == 0) continue;
      const MfIntfClassT& record = *data.classes[0];
      const bool hasSvcId = side.find("svcid") != std::string::npos;
      EXPECT_EQ(Text(record.ids[kMfServiceSide]), hasSvcId ? WithIds("$2")
                                                  : worker ? WithIds("$1")
                                                           : Text(UniIdT{}));
      EXPECT_EQ(record.sides[kMfServiceSide].multiplicity, kMfSingleInstance);
      EXPECT_EQ(record.sides[kMfServiceSide].flags, 0U);
    }
  }
}

TEST(ClassElement, GivesNestedModulesFreshIds) {
  MfLdpDataT data;
  const std::string one = R"(<clientside multiplicity="perLdp"><module name="n"/></clientside>)";
  ASSERT_EQ(Parse(InRoot(WithIds("<class id=\"$1\">" + one + "</class><class id=\"$2\">" + one +
                                 "</class>")),
                  data),
            kBtkOk);
  ASSERT_EQ(data.modules.count, 2);
  for (int i = 0; i < 2; ++i) {
    EXPECT_STREQ(data.classes[i]->sides[kMfClientSide].moduleref, data.modules[i]->id);
    EXPECT_EQ(std::string(data.modules[i]->id).size(), 32U);
    EXPECT_EQ(data.modules[i]->flags, kMfModuleGeneratedId | kMfModuleOwnsLoadpoint);
    EXPECT_EQ(data.modules[i]->impls[0]->version[0], 0U);
  }
  EXPECT_STRNE(data.modules[0]->id, data.modules[1]->id);
}

#if defined(__unix__)
// A process and its fork go on from the same memory, but not with the same ids.
TEST(ClassElement, GivesFreshIdsInForkedProcesses) {
  const auto freshId = [] {
    MfLdpDataT data;
    const BtkErrorT e =
        Parse(InRoot(WithIds(
                  R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n"/>
                                     </clientside></class>)")),
              data);
    return e == kBtkOk ? std::string(data.modules[0]->id) : std::string();
  };
  const std::string first = freshId();
  int pipeEnds[2];
  ASSERT_EQ(pipe(pipeEnds), 0);
  const pid_t child = fork();
  if (child == 0) {
    const std::string id = freshId();
    _exit(write(pipeEnds[1], id.data(), id.size()) == 32 ? 0 : 1);
  }
  ASSERT_GT(child, 0);
  int status = -1;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  char ofChild[32] = {};
  EXPECT_EQ(read(pipeEnds[0], ofChild, sizeof ofChild), 32);
  close(pipeEnds[0]);
  close(pipeEnds[1]);
  EXPECT_NE(freshId(), std::string(ofChild, sizeof ofChild));
  EXPECT_NE(first, std::string(ofChild, sizeof ofChild));
}
#endif

}  // namespace
}  // namespace tarnmf::test
