#include "tests/xml/parse.h"

namespace tarnmf::test {
namespace {

TEST(RunnableElement, ReadsRoles) {
  const Case cases[] = {
      {"least", R"(<runnable moduleref="m"/>)", kBtkOk,
       "runnable moduleref=\"m\" loadpoint=\"\"+\n"},
      {"every attribute, in any order of roles",
       R"(<runnable moduleref="m"><launcher nameid="l" types=";a;;b c;"/>
            <service id="$1" model="SPAWNONLY" commonname="c" version="-2" launcher="l"
                     csim="classbased" managedtype="worker" multiplicity="perLdp" recover="yes"
                     exposed="true" port="32767" url="u"/>
            <app nameid="a" launcher=""/><service id="$2"/></runnable>)",
       kBtkOk,
       "runnable moduleref=\"m\" loadpoint=\"\"+\n"
       "  service launcher=\"l\" model=0 csim=1 managedtype=2 id=$1 multiplicity=3 "
       "commonname=\"c\" version=-2 recover=1 exposed=1 port=32767 url=\"u\"\n"
       "  service id=$2\n  app launcher=\"\" nameid=\"a\"\n"
       "  launcher launcher=\"l\" type=\"a\" type=\"b c\"\n"},
      {"container",
       R"(<runnable moduleref="m"><service id="$1" managedtype="container" csim="opaque"
            multiplicity="perProcess"/></runnable>)",
       kBtkOk,
       "runnable moduleref=\"m\" loadpoint=\"\"+\n"
       "  service csim=1 managedtype=1 id=$1 multiplicity=0\n"},
      {"a second types adds",
       R"(<runnable moduleref="m"><launcher nameid="l" types="a" TYPES="b;c"/></runnable>)", kBtkOk,
       "runnable moduleref=\"m\" loadpoint=\"\"+\n"
       "  launcher launcher=\"l\" type=\"b\" type=\"c\" type=\"a\"\n"},
      {"no attribute", "<runnable/>", kBtkMissing, ""},
      {"service without id", R"(<runnable moduleref="m"><service url="u"/></runnable>)",
       kBtkMissing, ""},
      {"service version alone",
       R"(<runnable moduleref="m"><service id="$1" version="1"/></runnable>)", kBtkForbidden, ""},
      {"app without name", R"(<runnable moduleref="m"><app launcher="l"/></runnable>)", kBtkMissing,
       ""},
      {"launcher without types", R"(<runnable moduleref="m"><launcher nameid="l"/></runnable>)",
       kBtkMissing, ""},
      {"launcher without name", R"(<runnable moduleref="m"><launcher types="l"/></runnable>)",
       kBtkMissing, ""},
      {"role without attributes", R"(<runnable moduleref="m"><app/></runnable>)", kBtkMissing, ""},
      {"marks of one role do not reach the next",
       R"(<runnable moduleref="m"><app nameid="a"/><app nameid="b"/><app launcher="l"/></runnable>)",
       kBtkMissing, ""},
      {"unknown role", R"(<runnable moduleref="m"><tool nameid="a"/></runnable>)", kBtkUnexpected,
       ""},
  };
  ExpectAll(cases);
}

std::string InRole(const std::string& content) {
  return InRoot(R"(<runnable moduleref="m"><app nameid="a">)" + content + "</app></runnable>");
}

// Arguments are joined by "|".
std::string ReadArguments(const std::string& args) {
  MfLdpDataT data;
  if (const BtkErrorT code = Parse(InRole(args), data)) return std::to_string(code);
  const MfListT<btkWChar>& list = data.runnables[0]->apps[0]->args;
  std::string joined;
  for (const btkWChar* arg : list)
    joined += Text(arg) + "|";
  EXPECT_EQ(list.items[list.count], nullptr);
  return joined;
}

TEST(ArgsElement, CutsText) {
  const struct {
    const char* arg;
    const char* expected;
  } rows[] = {
      {"<arg>a \"b c\" 'd'e</arg>", "a|b c|d|e|"},
      {"<arg>x\"y</arg>", "x\"y|"},
      {"<arg>x\"y z\"</arg>", "x\"y|z\"|"},
      {"<arg>  -x\t\"a b\"\n</arg>", "-x|a b|"},
      {"<arg>\"a\tb\xc2\xa0"
       "c\"</arg>",
       "a b c|"},
      {"<arg>\"a 'b'\" 'c \"d\"'</arg>", "a 'b'|c \"d\"|"},
      {"<arg>\"a b</arg>", "a b|"},
      {"<arg>\"\" '' x \"</arg>", "x|"},
      {"<arg>\" \"\"  \"</arg>", " |  |"},
      {"<arg>\"a\"\"b\"</arg>", "a|b|"},
      {"<arg>a\xe2\x80\x83z</arg>", "a|z|"},
      {"<arg> \t </arg>", ""},
      {"<arg/>", ""},
      {"<arg>a b</arg><arg>c d</arg><arg>e f</arg>", "a|b|c|d|e|f|"},
      {"<arg precomposed=\"true\">  -x \"a b\" </arg>", "  -x \"a b\" |"},
      {"<arg precomposed=\"true\"> \t\r\n</arg>", ""},
      {"<arg precomposed=\"true\">\xc2\xa0</arg>", "\xc2\xa0|"},
      {"<arg precomposed=\"false\">-x y</arg><arg>z</arg>", "-x|y|z|"},
      {"<arg precomposed=\"yes\">a b</arg><arg>a b</arg>", "a b|a|b|"},
      {"<arg>x<!--c--></arg>", "42"},
      {"<arg other=\"1\">x<!--c-->y</arg>", "42"},
      {"<arg><![CDATA[x]]></arg>", "42"},
      {"<arg><x/></arg>", "42"},
      {"<arg>a&amp;b &#34;c&#9;d&quot;&#x20;e</arg>", "a&b|c d|e|"},
      {"<arg precomposed=\"yes\">&#13;</arg>", ""},
      {"<arg precomposed=\"yes\"/><arg precomposed=\"no\"> </arg>", ""},
      {"<arg>''a'b'</arg>", "a'b'|"},
      {"<other/>", "42"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.arg);
    EXPECT_EQ(ReadArguments(std::string("<args ignored=\"1\">") + row.arg + "</args>"),
              row.expected);
  }
}

TEST(RoleContent, ALaterElementReplacesAnEarlierOne) {
  EXPECT_EQ(ReadArguments("<args><arg>a b</arg></args><args><arg>c</arg></args>"), "c|");
  EXPECT_EQ(ReadArguments("<args><arg>a b</arg></args><args/>"), "");
  const std::string head = "0\nrunnable moduleref=\"m\" loadpoint=\"\"+\n  app nameid=\"a\"\n";
  const std::string set = "<env><set name=\"A\">v</set></env>";
  EXPECT_EQ(ParseAndDump(InRole(set + "<env><unset name=\"B\"/></env>")),
            head + "    env action=2 flags=1 name=\"B\"\n");
  EXPECT_EQ(ParseAndDump(InRole(set + "<env/>")), head);
  // What only the earlier one said about the start stays.
  EXPECT_EQ(ParseAndDump(InRole("<env initstate=\"inprocess\"/><env/>")),
            "0\nrunnable moduleref=\"m\" loadpoint=\"\"+\n  app initstate=2 nameid=\"a\"\n");
}

TEST(EnvElement, ReadsCommands) {
  const struct {
    const char* content;
    const char* expected;  // the commands, or the code
  } rows[] = {
      {R"(<set name="A"> v </set><append name="B">b</append><prepend name="C">c</prepend>)",
       "    env action=1 flags=1 name=\"A\" value=\" v \"\n"
       "    env action=3 flags=1 name=\"B\" value=\"b\"\n"
       "    env action=4 flags=1 name=\"C\" value=\"c\"\n"},
      {R"(<unset name="X"/>)", "    env action=2 flags=1 name=\"X\"\n"},
      {R"(<set name="" restrictto="create">v</set><set name="B" restrictto="override">v</set>)",
       "    env action=1 flags=5 name=\"\" value=\"v\"\n"
       "    env action=1 flags=3 name=\"B\" value=\"v\"\n"},
      {R"(<set name="A">v<x/></set>)", "    env action=1 flags=1 name=\"A\" value=\"v\"\n"},
      {R"(<set name="A">a&lt;b<![CDATA[c]]></set>)",
       "    env action=1 flags=1 name=\"A\" value=\"a<b\"\n"},
      {R"(<append name="A"> </append>)", "    env action=3 flags=1 name=\"A\" value=\" \"\n"},
      {R"(<append name="A"/>)", "42"},
      {R"(<prepend name="A"/>)", "42"},
      {R"(<set name="A"><![CDATA[c]]></set>)", "42"},
      {R"(<set name="A"></set>)", "42"},
      {R"(<set name="PATH"/>)", "42"},
      {R"(<set/>)", "42"},
      {R"(<set>v</set>)", "1"},
      {R"(<set name="A"><x/>v</set>)", "42"},
      {R"(<set name="A"><!--c-->v</set>)", "42"},
      {R"(<set restrictto="create">v</set>)", "1"},
      {R"(<unset name="X">v</unset>)", "42"},
      {R"(<unset/>)", "1"},
      {R"(<set name="A">v</set><remove name="B"/>)", "42"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.content);
    const std::string parsed =
        ParseAndDump(InRole(std::string("<env initstate=\"clean\">") + row.content + "</env>"));
    const std::string head =
        "0\nrunnable moduleref=\"m\" loadpoint=\"\"+\n  app initstate=1 nameid=\"a\"\n";
    EXPECT_EQ(parsed, row.expected[0] == ' ' ? head + row.expected : row.expected);
  }
}

// An entity of the document is a node of its own, but only part of the value in an attribute.
TEST(Entities, AreNoText) {
  const auto code = [](const std::string& content) {
    const std::string parsed =
        ParseAndDump("<!DOCTYPE tarnmanifest [<!ENTITY e \"x\">]>" + InRole(content));
    return parsed.substr(0, parsed.find('\n'));
  };
  EXPECT_EQ(code("<args><arg>&e;</arg></args>"), "42");
  EXPECT_EQ(code("<args><arg>a&e;</arg></args>"), "42");
  EXPECT_EQ(code("<env><set name=\"A\">&e;</set></env>"), "42");
  EXPECT_EQ(code("<env><set name=\"A\">a&e;</set></env>"), "0");
  EXPECT_EQ(code("<env><unset name=\"A\">&e;</unset></env>"), "42");
  EXPECT_EQ(code("&e;"), "42");
  const std::string inAttribute = ParseAndDump("<!DOCTYPE tarnmanifest [<!ENTITY e \"x\">]>" +
                                               InRoot("<runnable moduleref=\"a&e;&#66;\"/>"));
  EXPECT_EQ(inAttribute, "0\nrunnable moduleref=\"axB\" loadpoint=\"\"+\n");
}

// The XML library reads long texts in pieces.
TEST(RoleContent, LongTextsAreWhole) {
  std::string text, expected;
  for (int word = 0; word < 20'000; ++word) {
    const std::string number = std::to_string(word);
    text += number + (word % 3 == 0 ? " &quot;x y&quot;" : "\n");
    expected += number + (word % 3 == 0 ? "|x y|" : "|");
  }
  EXPECT_EQ(ReadArguments("<args><arg>" + text + "</arg></args>"), expected);
  const std::string value(300'000, 'v');
  EXPECT_EQ(ParseAndDump(InRole("<env><set name=\"" + value + "\">" + value + "</set></env>")),
            "0\nrunnable moduleref=\"m\" loadpoint=\"\"+\n  app nameid=\"a\"\n"
            "    env action=1 flags=1 name=\"" +
                value + "\" value=\"" + value + "\"\n");
}

}  // namespace
}  // namespace tarnmf::test
