// Two faults in one document: the code is that of the check that comes first.
#include "tests/xml/parse.h"

namespace tarnmf::test {
namespace {

struct Row {
  const char* fragment;  // with two faults at least
  BtkErrorT code;        // of the one that is found first
};

template <std::size_t N>
void ExpectCodes(const Row (&rows)[N]) {
  for (const Row& row : rows)
    EXPECT_EQ(ParseAndDump(InRoot(WithIds(row.fragment))), std::to_string(row.code))
        << row.fragment;
}

// The XML library keeps attributes sorted by their names as they are written, capitals first.
TEST(Order, OfAttributesIsThatOfTheirNames) {
  const Row rows[] = {
      {R"(<module zzz="" abits="1" id="m" name="n"/>)", kBtkMalformed},
      {R"(<module abits="1" aaa="" id="m" name="n"/>)", kBtkUnexpected},
      {R"(<module abits="1" Zzz="" id="m" name="n"/>)", kBtkUnexpected},
      {R"(<module type="" resolvepath="x" id="m" name="n"/>)", kBtkRefused},
      {R"(<module resolvepath="x" NAME="" id="m"/>)", kBtkMalformed},
      {R"(<module resolvepath="x" ID="m" id="m" name="n"/>)", kBtkDuplicate},
      {R"(<class version="40000" id="x"/>)", kBtkMalformed},
      {R"(<class version="40000" id="$1" managedtype="container"/>)", kBtkForbidden},
      {R"(<class version="40000" xsid="x" id="$1"/>)", kBtkOutOfRange},
  };
  ExpectCodes(rows);
}

TEST(Order, OfChecksWithinAnElement) {
  const Row rows[] = {
      // Attributes, then what is missing, then children, then what comes after them.
      {R"(<module x="" id="m"/>)", kBtkUnexpected},
      {R"(<module id="m"><x/></module>)", kBtkMissing},
      {R"(<module name="n"><platformmodule machinetype=""/></module>)", kBtkMalformed},
      {R"(<module id="m" name="n"><platformmodule machinetype="a" x=""/></module>)",
       kBtkUnexpected},
      {R"(<module id="m" name="n"><platformmodule machinetype="a"><x/></platformmodule></module>)",
       kBtkMissing},
      {R"(<module id="m" name="n"><preload by="anyone" name=""/></module>)", kBtkMalformed},
      {R"(<class displayname="d" createon="" xx=""/>)", kBtkUnexpected},
      {R"(<class id="$1" displayname="d"><x/></class>)", kBtkMissing},
      // Sides: twice, then the affinity, then attributes, then the module.
      {R"(<class id="$1" affinity="agent"><clientside/></class>)", kBtkForbidden},
      {R"(<class id="$1" affinity="app"><agentside x=""/></class>)", kBtkForbidden},
      {R"(<class id="$1"><serviceside/></class>)", kBtkForbidden},
      {R"(<class id="$1"><clientside moduleref="a"/><clientside x=""/></class>)", kBtkDuplicate},
      {R"(<class id="$1" affinity="service"><serviceside xsid="$2"/><serviceside/></class>)",
       kBtkDuplicate},
      {R"(<class id="$1"><clientside moduleref="a" x="">  </clientside></class>)", kBtkUnexpected},
      {R"(<class id="$1"><clientside moduleref="a"><x/></clientside></class>)", kBtkDuplicate},
      {R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n"/><module/></clientside>
          </class>)",
       kBtkDuplicate},
      {R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n" type="t"><x/></module>
          </clientside></class>)",
       kBtkUnexpected},
      {R"(<class id="$1"><clientside multiplicity="perLdp"><module name="n" type="t"/><x/>
          </clientside></class>)",
       kBtkNotSharedLib},
      {R"(<class id="$1" affinity="service"><serviceside isolation="x"/></class>)", kBtkMalformed},
      {R"(<class id="$1" affinity="service"><serviceside xsid="$2" moduleref="m"> </serviceside>
          </class>)",
       kBtkMissing},
      {R"(<class id="$1" affinity="service"><serviceside svcid="$2" moduleref="m"
            isolation="strict"> </serviceside></class>)",
       kBtkForbidden},
      {R"(<class id="$1" affinity="service"><serviceside svcid="$2" xsversion="1"/></class>)",
       kBtkMissing},
      {R"(<class id="$1" affinity="service"><serviceside svcid="$2" xsversion="1"><x/></serviceside>
          </class>)",
       kBtkUnexpected},
      {R"(<class id="$1" affinity="service"><serviceside svcid="$2" moduleref="m" xsversion="1"/>
          <x/></class>)",
       kBtkForbidden},
      // Runnables and their roles.
      {R"(<runnable x=""><x/></runnable>)", kBtkUnexpected},
      {R"(<runnable><x/></runnable>)", kBtkMissing},
      {R"(<runnable moduleref="m"><service version="1"/></runnable>)", kBtkMissing},
      {R"(<runnable moduleref="m"><service id="$1" version="1"><x/></service></runnable>)",
       kBtkForbidden},
      {R"(<runnable moduleref="m"><app launcher="l"><x/></app></runnable>)", kBtkMissing},
      {R"(<runnable moduleref="m"><launcher nameid="l"><x/></launcher></runnable>)", kBtkMissing},
      {R"(<runnable moduleref="m"><app nameid="a"><args><arg precomposed="1">x<!--c--></arg></args>
          </app></runnable>)",
       kBtkUnexpected},
      {R"(<runnable moduleref="m"><app nameid="a"><args><arg precomposed="1"><x/></arg></args></app>
          </runnable>)",
       kBtkMalformed},
      {R"(<runnable moduleref="m"><app nameid="a"><env initstate="x"><x/></env></app></runnable>)",
       kBtkMalformed},
      {R"(<runnable moduleref="m"><app nameid="a"><env><set restrictto="x"><x/></set></env></app>
          </runnable>)",
       kBtkMalformed},
      {R"(<runnable moduleref="m"><app nameid="a"><env><set restrictto="create"><x/></set></env>
          </app></runnable>)",
       kBtkUnexpected},
      {R"(<runnable moduleref="m"><app nameid="a"><env><unset>v</unset></env></app></runnable>)",
       kBtkUnexpected},
      // Between elements: whichever comes first.
      {R"(<module id="m" name="n"/><class/><x/>)", kBtkMissing},
      {R"(<class id="$1" managedtype="container"/><class id="x"/>)", kBtkForbidden},
  };
  ExpectCodes(rows);
}

}  // namespace
}  // namespace tarnmf::test
