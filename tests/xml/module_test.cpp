#include "tests/xml/parse.h"

namespace tarnmf::test {
namespace {

TEST(ModuleElement, ReadsEveryAttribute) {
  const Case cases[] = {
      {"least", R"(<module id="m" name="n"/>)", kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n"},
      {"most",
       R"(<module id="m" type="executable" name="n" explicitname="yes" loadpoint="l" path="p"
                  forcepath="TRUE" description="d" apilevel="3" version="7.8" private="true"
                  abits="64"/>)",
       kBtkOk,
       "module id=\"m\" type=\"executable\" loadpoint=\"l\"+ flags=1\n"
       "  impl abits=64 name=\"n\"+ path=\"p\"+ apilevel=3 version=1 flags=3\n"},
      {"letter case of names and of the default type",
       R"(<MODULE ID="m" Name="n" TYPE="SHAREDLIB" path="p"/>)", kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"p\"+ version=1\n"},
      {"load point given, path not", R"(<module id="m" name="n" loadpoint="x"/>)", kBtkOk,
       "module id=\"m\" loadpoint=\"x\"+\n  impl name=\"n\"+ version=1\n"},
      {"empty load point counts as given", R"(<module id="m" name="n" loadpoint=""/>)", kBtkOk,
       "module id=\"m\"\n  impl name=\"n\"+ version=1\n"},
      {"empty path", R"(<module id="m" name="n" loadpoint="x" path=""/>)", kBtkOk,
       "module id=\"m\" loadpoint=\"x\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n"},
      {"false flags", R"(<module id="m" name="n" explicitname="no" private="False"/>)", kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n"},
      {"beyond ASCII", "<module id=\"\xc3\xa9\" name=\"\xf0\x9f\x98\x80\"/>", kBtkOk,
       "module id=\"\xc3\xa9\" loadpoint=\"\"+\n"
       "  impl name=\"\xf0\x9f\x98\x80\"+ path=\"\"+ version=1\n"},
      {"text, comments and blanks between children",
       R"(<module id="m" name="n"> text <!--c--> <preload name="x"/> </module>)", kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n"
       "    preload by=2 name=\"x\"\n"},
      {"other nodes between children", R"(<module id="m" name="n"><![CDATA[ ]]></module>)",
       kBtkUnexpected, ""},
      {"no attribute", "<module/>", kBtkMissing, ""},
      {"no name", R"(<module id="m"/>)", kBtkMissing, ""},
      {"no id", R"(<module name="n"/>)", kBtkMissing, ""},
      {"attribute of a long name",
       R"(<module id="m" name="n" averyveryveryverylongattributename="x"/>)", kBtkUnexpected, ""},
      {"attribute beyond ASCII", "<module id=\"m\" name=\"n\" \xc3\xa9=\"x\"/>", kBtkUnexpected,
       ""},
      {"element of a letter that looks like a known one in its low byte",
       "<\xc5\xadodule id=\"m\" name=\"n\"/>", kBtkUnexpected, ""},
      {"attribute of such a letter",
       "<module \xc5\xa9"
       "d=\"m\" name=\"n\"/>",
       kBtkUnexpected, ""},
      {"unknown child", R"(<module id="m" name="n"><modules/></module>)", kBtkUnexpected, ""},
      {"bad child before missing id", R"(<module name="n"><x/></module>)", kBtkUnexpected, ""},
  };
  ExpectAll(cases);
}

TEST(ModuleElement, HoldsPlatformModulesAndPreloads) {
  const Case cases[] = {
      {"what is not given is borrowed",
       R"(<module id="m" name="n" explicitname="yes" path="p" forcepath="yes" apilevel="4"
                  abits="32">
            <platformmodule machinetype="a" apilevel="3"/>
            <platformmodule machinetype="b" name="q"/>
            <platformmodule machinetype="c" path="r" forcepath="no" version="9"/>
            <platformmodule machinetype="c" name="s" explicitname="no" path="t"/>
          </module>)",
       kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n"
       "  impl abits=32 name=\"n\"+ path=\"p\"+ apilevel=4 version=1 flags=3\n"
       "  impl machinetype=\"a\" name=\"n\" path=\"p\" apilevel=3 flags=3\n"
       "  impl machinetype=\"b\" name=\"q\"+ path=\"p\" apilevel=4 flags=1\n"
       "  impl machinetype=\"c\" name=\"n\" path=\"r\"+ apilevel=4 flags=2\n"
       "  impl machinetype=\"c\" name=\"s\"+ path=\"t\"+ apilevel=4\n"},
      {"preloads go to their implementation",
       R"(<module id="m" name="n"><preload by="anyone"/>
            <platformmodule machinetype="a" name="q"><preload name="x"/></platformmodule>
            <preload name="y"/>
          </module>)",
       kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n"
       "  impl name=\"n\"+ path=\"\"+ version=1\n"
       "    preload by=1\n    preload by=2 name=\"y\"\n"
       "  impl machinetype=\"a\" name=\"q\"+ path=\"\"\n    preload by=2 name=\"x\"\n"},
      {"a load point of its own lends no path",
       R"(<module id="m" name="n" loadpoint="l"><platformmodule machinetype="a" version=""/>
            <platformmodule machinetype="b" path="" forcepath="yes"/></module>)",
       kBtkOk,
       "module id=\"m\" loadpoint=\"l\"+\n  impl name=\"n\"+ version=1\n"
       "  impl machinetype=\"a\" name=\"n\"\n"
       "  impl machinetype=\"b\" name=\"n\" path=\"\"+ flags=1\n"},
      {"preloads of two platform modules, each in its own order",
       R"(<module id="m" name="n"><platformmodule machinetype="a" apilevel="1"><preload name="x"/>
            <preload by="service"/><preload by="client"/></platformmodule>
            <platformmodule machinetype="b" apilevel="1"><preload name="z"/></platformmodule>
          </module>)",
       kBtkOk,
       "module id=\"m\" loadpoint=\"\"+\n  impl name=\"n\"+ path=\"\"+ version=1\n"
       "  impl machinetype=\"a\" name=\"n\" path=\"\" apilevel=1\n"
       "    preload by=2 name=\"x\"\n    preload by=3\n    preload by=4\n"
       "  impl machinetype=\"b\" name=\"n\" path=\"\" apilevel=1\n"
       "    preload by=2 name=\"z\"\n"},
      {"machine type alone",
       R"(<module id="m" name="n"><platformmodule machinetype="a"/></module>)", kBtkMissing, ""},
      {"no machine type", R"(<module id="m" name="n"><platformmodule name="q"/></module>)",
       kBtkMissing, ""},
      {"forcepath without path",
       R"(<module id="m" name="n" path="p"><platformmodule machinetype="a" forcepath="no"
            name="q"/></module>)",
       kBtkMissing, ""},
      {"explicitname without name",
       R"(<module id="m" name="n"><platformmodule machinetype="a" explicitname="no"
            path="q"/></module>)",
       kBtkMissing, ""},
      {"nested platform module",
       R"(<module id="m" name="n"><platformmodule machinetype="a" name="q">
            <platformmodule machinetype="b" name="r"/></platformmodule></module>)",
       kBtkUnexpected, ""},
  };
  ExpectAll(cases);
}

// The text of a preload's attributes, and the code and the "by" that it ends with.
TEST(PreloadElement, ChecksCombinations) {
  const struct {
    const char* attributes;
    BtkErrorT code;
    const char* dump;
  } rows[] = {
      {R"(by="anyone")", kBtkOk, "by=1"},
      {R"(by="EXECUTABLE" name="x")", kBtkOk, "by=2 name=\"x\""},
      {R"(by="service")", kBtkOk, "by=3"},
      {R"(by="service" name="x" svcid="$1")", kBtkOk, "by=3 name=\"x\" svcid=$1"},
      {R"(by="client" name="x")", kBtkOk, "by=4 name=\"x\""},
      {R"(svcid="$1")", kBtkOk, "by=3 svcid=$1"},
      {R"(svcid="$1" name="x")", kBtkOk, "by=3 name=\"x\" svcid=$1"},
      {R"(name="x")", kBtkOk, "by=2 name=\"x\""},
      {R"(optionid="$1")", kBtkOk, "optionid=$1"},
      {R"(by="anyone" name="x")", kBtkMissing, ""},
      {R"(by="anyone" svcid="$1")", kBtkMissing, ""},
      {R"(by="client" svcid="$1")", kBtkMissing, ""},
      {R"(by="executable")", kBtkMissing, ""},
      {"", kBtkMissing, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.attributes);
    const std::string open = R"(<module id="m" name="n"><preload )" + WithIds(row.attributes);
    const std::string expected = row.code != kBtkOk
                                     ? std::to_string(row.code)
                                     : "0\nmodule id=\"m\" loadpoint=\"\"+\n"
                                       "  impl name=\"n\"+ path=\"\"+ version=1\n    preload " +
                                           WithIds(row.dump) + "\n";
    EXPECT_EQ(ParseAndDump(InRoot(open + "/></module>")), expected);
    EXPECT_EQ(ParseAndDump(InRoot(open + ">text<!--c--><![CDATA[d]]><?p i?></preload></module>")),
              expected);
    EXPECT_EQ(ParseAndDump(InRoot(open + "><x/></preload></module>")),
              std::to_string(row.code == kBtkOk ? kBtkUnexpected : row.code));
  }
}

}  // namespace
}  // namespace tarnmf::test
