// Every attribute of every element: given once, empty, malformed, twice, misspelled and misplaced.
#include <set>
#include <vector>

#include "tests/xml/parse.h"

namespace tarnmf::test {
namespace {

struct AttributeT {
  const char* name;
  const char* value;  // a good one
  BtkErrorT empty;    // the code of an empty value
  const char* bad;    // another value that is refused; null: there is none
  BtkErrorT badCode;
  const char* needs = "";           // what has to stand beside it
  BtkErrorT twice = kBtkDuplicate;  // the code of a second one in capitals
};

struct ElementT {
  const char* document;  // "%" stands for the attributes
  const char* base;      // attributes that a good element has, each between blanks
  std::vector<AttributeT> attributes;
};

constexpr BtkErrorT kBad = kBtkMalformed;

const std::vector<ElementT> kElements = {
    {"<module %/>",
     R"( id="m" name="n" )",
     {{"type", "executable", kBad, nullptr, kBtkOk},
      {"id", "m", kBad, nullptr, kBtkOk},
      {"name", "n", kBad, nullptr, kBtkOk},
      {"explicitname", "yes", kBad, "1", kBad},
      {"loadpoint", "l", kBtkOk, nullptr, kBtkOk},
      {"path", "p", kBtkOk, nullptr, kBtkOk},
      {"forcepath", "no", kBad, " no", kBad},
      {"description", "d", kBtkOk, nullptr, kBtkOk, "", kBtkOk},
      {"apilevel", "2", kBad, "2147483648", kBad},
      {"version", "1", kBtkOk, nullptr, kBtkOk},
      {"private", "true", kBad, "truely", kBad},
      {"abits", "32", kBad, "48", kBad}}},
    {R"(<module id="m" name="n"><platformmodule %/></module>)",
     R"( machinetype="a" name="n" path="p" )",
     {{"machinetype", "a", kBad, nullptr, kBtkOk},
      {"name", "n", kBad, nullptr, kBtkOk},
      {"explicitname", "yes", kBad, "on", kBad},
      {"path", "p", kBtkOk, nullptr, kBtkOk},
      {"forcepath", "no", kBad, "off", kBad},
      {"apilevel", "2", kBad, "-2147483649", kBad},
      {"version", "1", kBtkOk, nullptr, kBtkOk}}},
    {R"(<module id="m" name="n"><preload %/></module>)",
     R"( name="x" )",
     {{"by", "executable", kBad, "nobody", kBad},
      {"name", "x", kBad, nullptr, kBtkOk, R"( by="executable" )"},
      {"svcid", "$1", kBad, "x", kBad},
      {"optionid", "$1", kBad, "{$1}", kBad}}},
    {"<class %/>",
     R"( id="$1" commonname="c" )",
     {{"id", "$1", kBad, "x", kBad},
      {"affinity", "agent", kBad, "agents", kBad},
      {"commonname", "c", kBtkOk, nullptr, kBtkOk},
      {"displayname", "d", kBtkOk, nullptr, kBtkOk},
      {"version", "1", kBad, "32768", kBtkOutOfRange},
      {"createon", "c", kBtkOk, nullptr, kBtkOk, "", kBtkOk},
      {"managedtype", "worker", kBad, "container", kBtkForbidden}}},
    {R"(<class id="$1"><clientside %/></class>)",
     R"( moduleref="m" )",
     {{"moduleref", "m", kBad, nullptr, kBtkOk}, {"multiplicity", "perLdp", kBad, "never", kBad}}},
    {R"(<class id="$1"><agentside %/></class>)",
     R"( moduleref="m" )",
     {{"moduleref", "m", kBad, nullptr, kBtkOk}, {"multiplicity", "perLdp", kBad, "never", kBad}}},
    {R"(<class id="$1" affinity="service"><serviceside %/></class>)",
     R"( moduleref="m" svcid="$2" )",
     {{"moduleref", "m", kBad, nullptr, kBtkOk},
      {"multiplicity", "perLdp", kBad, "never", kBad},
      {"svcid", "$2", kBad, "2", kBad},
      {"xsid", "$3", kBad, "3", kBad},
      {"xsname", "x", kBtkOk, nullptr, kBtkOk},
      {"xsversion", "-3", kBad, "3000000000", kBad, R"( xsname="x" )"},
      {"isolation", "strict", kBad, "stricter", kBad, R"( xsid="$3" )"},
      {"exposed", "no", kBad, "0", kBad}}},
    {"<runnable %/>", R"( moduleref="m" )", {{"moduleref", "m", kBad, nullptr, kBtkOk}}},
    {R"(<runnable moduleref="m"><service %/></runnable>)",
     R"( id="$1" commonname="c" )",
     {{"model", "managed", kBad, "unmanaged", kBad},
      {"id", "$1", kBad, "1", kBad},
      {"commonname", "c", kBtkOk, nullptr, kBtkOk},
      {"version", "-1", kBad, "99999999999", kBad},
      {"launcher", "l", kBtkOk, nullptr, kBtkOk},
      {"csim", "opaque", kBad, "class", kBad},
      {"managedtype", "container", kBad, "contain", kBad},
      {"multiplicity", "perProcess", kBad, "perprocesses", kBad},
      {"recover", "yes", kBad, "ye", kBad},
      {"exposed", "yes", kBad, "y", kBad},
      {"port", "80", kBad, "-1", kBtkOutOfRange},
      {"url", "u", kBtkOk, nullptr, kBtkOk}}},
    {R"(<runnable moduleref="m"><app %/></runnable>)",
     R"( nameid="a" )",
     {{"nameid", "a", kBtkOk, nullptr, kBtkOk}, {"launcher", "l", kBtkOk, nullptr, kBtkOk}}},
    {R"(<runnable moduleref="m"><launcher %/></runnable>)",
     R"( nameid="a" types="t" )",
     {{"nameid", "a", kBtkOk, nullptr, kBtkOk}, {"types", "t;u", kBad, ";;", kBad, "", kBtkOk}}},
    {R"(<runnable moduleref="m"><app nameid="a"><env %/></app></runnable>)",
     " ",
     {{"initstate", "clean", kBad, "dirty", kBad}}},
    {R"(<runnable moduleref="m"><app nameid="a"><env><set %>v</set></env></app></runnable>)",
     R"( name="A" )",
     {{"name", "A", kBtkOk, nullptr, kBtkOk}, {"restrictto", "create", kBad, "creat", kBad}}},
    {R"(<runnable moduleref="m"><app nameid="a"><env><append %>v</append></env></app></runnable>)",
     R"( name="A" )",
     {{"name", "A", kBtkOk, nullptr, kBtkOk}, {"restrictto", "override", kBad, "over", kBad}}},
    {R"(<runnable moduleref="m"><app nameid="a"><env><prepend %>v</prepend></env></app></runnable>)",
     R"( name="A" )",
     {{"name", "A", kBtkOk, nullptr, kBtkOk}, {"restrictto", "create", kBad, "any", kBad}}},
    {R"(<runnable moduleref="m"><app nameid="a"><env><unset %/></env></app></runnable>)",
     R"( name="A" )",
     {{"name", "A", kBtkOk, nullptr, kBtkOk}}},
    {R"(<runnable moduleref="m"><app nameid="a"><args><arg %>v</arg></args></app></runnable>)",
     " ",
     {{"precomposed", "yes", kBad, "1", kBad}}},
};

std::string Upper(std::string text) {
  for (char& letter : text)
    letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  return text;
}

std::string Given(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + value + "\" ";
}

// The code of the element with its base attributes and `attributes`. What the base has of the
// attribute `name` is left out.
BtkErrorT Code(const ElementT& element, const std::string& name, const std::string& attributes) {
  std::string base = element.base;
  if (const std::size_t at = base.find(" " + name + "=\""); at != std::string::npos) {
    base.erase(at, base.find('"', base.find('"', at) + 1) + 1 - at);
  }
  std::string document = element.document;
  document.replace(document.find('%'), 1, base + attributes);
  MfLdpDataT data;
  const BtkErrorT code = Parse(InRoot(WithIds(document)), data);
  EXPECT_TRUE(code == kBtkOk || IsEmpty(data)) << document;
  return code;
}

TEST(Attributes, AreReadCheckedAndRefusedTwice) {
  for (const ElementT& element : kElements) {
    for (const AttributeT& attribute : element.attributes) {
      SCOPED_TRACE(std::string(element.document) + " " + attribute.name);
      const std::string name = attribute.name;
      const auto code = [&](const std::string& attributes) {
        return Code(element, name, attributes + attribute.needs);
      };
      const std::string once = Given(name, attribute.value);
      EXPECT_EQ(code(once), kBtkOk);
      EXPECT_EQ(code(Given(Upper(name), attribute.value)), kBtkOk);
      EXPECT_EQ(code(Given(name, "")), attribute.empty);
      if (attribute.bad != nullptr) {
        EXPECT_EQ(code(Given(name, attribute.bad)), attribute.badCode);
      }
      EXPECT_EQ(code(once + Given(Upper(name), attribute.value)), attribute.twice);
      EXPECT_EQ(code(once + Given(name + "s", attribute.value)), kBtkUnexpected);
      EXPECT_EQ(code(once + Given("xml:" + name, attribute.value)), kBtkUnexpected);
    }
  }
}

TEST(Attributes, BelongToTheirElements) {
  std::set<std::string> names = {"machinetypes", "root"};
  for (const ElementT& element : kElements) {
    for (const AttributeT& attribute : element.attributes)
      names.insert(attribute.name);
  }
  for (const ElementT& element : kElements) {
    std::set<std::string> foreign = names;
    for (const AttributeT& attribute : element.attributes)
      foreign.erase(attribute.name);
    for (const std::string& name : foreign)
      EXPECT_EQ(Code(element, name, Given(name, "1")), kBtkUnexpected)
          << element.document << " " << name;
    // The two elements that describe an implementation refuse this one by name.
    const bool known = element.attributes[0].name == std::string("type") ||
                       element.attributes[0].name == std::string("machinetype");
    for (const char* value : {"", "yes"}) {
      EXPECT_EQ(Code(element, "resolvepath", Given("resolvepath", value)),
                known ? kBtkRefused : kBtkUnexpected)
          << element.document;
    }
  }
}

}  // namespace
}  // namespace tarnmf::test
