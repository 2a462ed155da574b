#include <map>

#include "tests/xml/parse.h"

namespace tarnmf::test {
namespace {

// Places to put one value at, by the kind of value that stands there; "%" is the value.
const std::map<std::string, std::string> kPlaces = {
    {"affinity", R"(<class id="$1" affinity="%"/>)"},
    {"by", R"(<module id="m" name="n"><preload name="x" by="%"/></module>)"},
    {"initstate",
     R"(<runnable moduleref="m"><app nameid="a"><env initstate="%"/></app></runnable>)"},
    {"csim", R"(<runnable moduleref="m"><service id="$1" csim="%"/></runnable>)"},
    {"model", R"(<runnable moduleref="m"><service id="$1" model="%"/></runnable>)"},
    {"isolation",
     R"(<class id="$1" affinity="service"><serviceside xsid="$2" isolation="%"/></class>)"},
    {"managedtype", R"(<runnable moduleref="m"><service id="$1" managedtype="%"/></runnable>)"},
    {"multiplicity", R"(<runnable moduleref="m"><service id="$1" multiplicity="%"/></runnable>)"},
    {"boolean", R"(<runnable moduleref="m"><service id="$1" recover="%"/></runnable>)"},
    {"flag", R"(<module id="m" name="n" private="%"/>)"},
    {"decimal", R"(<module id="m" name="n" apilevel="%"/>)"},
    {"abits", R"(<module id="m" name="n" abits="%"/>)"},
    {"class version", R"(<class id="$1" version="%"/>)"},
    {"port", R"(<runnable moduleref="m"><service id="$1" port="%"/></runnable>)"},
    {"id", R"(<class id="%"/>)"},
    {"type", R"(<module id="m" name="n" type="%"/>)"},
};

std::string ParseValue(const std::string& place, const std::string& value) {
  std::string fragment = WithIds(kPlaces.at(place));
  fragment.replace(fragment.find('%'), 1, value);
  return ParseAndDump(InRoot(fragment));
}

TEST(Values, AreReadByTheirKind) {
  const struct {
    const char* place;
    const char* value;
    const char* expected;  // the code, or what the dump shows of the value; "-": nothing
  } rows[] = {
      {"affinity", "GENERIC", "-affinity"},
      {"affinity", "App", " affinity=1"},
      {"affinity", "agent", " affinity=2"},
      {"affinity", "sErvicE", " affinity=3"},
      {"affinity", " sErvicE", "432"},
      {"affinity", "sErvicEx", "432"},
      {"by", "Executable", " by=2"},
      {"by", "service", " by=3"},
      {"by", "CLIENT", " by=4"},
      {"by", " CLIENT", "432"},
      {"by", "CLIENTx", "432"},
      {"initstate", "Default", "-initstate"},
      {"initstate", "clean", " initstate=1"},
      {"initstate", "INPROCESS", " initstate=2"},
      {"initstate", " INPROCESS", "432"},
      {"initstate", "INPROCESSx", "432"},
      {"csim", "opaque", "-csim"},
      {"csim", "CLASSbased", " csim=1"},
      {"csim", " CLASSbased", "432"},
      {"csim", "CLASSbasedx", "432"},
      {"isolation", "RELAXED", "-isolation"},
      {"isolation", "strict", " isolation=1"},
      {"isolation", " strict", "432"},
      {"isolation", "strictx", "432"},
      {"managedtype", "generic", "-managedtype"},
      {"managedtype", "Worker", " managedtype=2"},
      {"managedtype", " Worker", "432"},
      {"managedtype", "Workerx", "432"},
      {"multiplicity", "alwaysnew", " multiplicity=0"},
      {"multiplicity", "SINGLEINSTANCE", "-multiplicity"},
      {"multiplicity", "perProcess", " multiplicity=2"},
      {"multiplicity", "perldp", " multiplicity=3"},
      {"multiplicity", " perldp", "432"},
      {"multiplicity", "perldpx", "432"},
      {"model", "spawnonly", " model=0"},
      {"model", "MANAGED", "-model"},
      {"model", " MANAGED", "432"},
      {"model", "MANAGEDx", "432"},
      {"affinity", "averyveryverylongword", "432"},
      {"affinity", "\xc3\xa9", "432"},
      {"boolean", "yes", " recover=1"},
      {"boolean", "TRUE", " recover=1"},
      {"boolean", "No", "-recover"},
      {"boolean", "false", "-recover"},
      {"flag", "true", " flags=1"},
      {"flag", "no", "-flags"},
      {"decimal", "12ab", " apilevel=12"},
      {"decimal", "ab", "-apilevel"},
      {"decimal", "\t +7", " apilevel=7"},
      {"decimal", "-2147483648", " apilevel=-2147483648"},
      {"decimal", "2147483647", " apilevel=2147483647"},
      {"decimal", "2147483648", "432"},
      {"decimal", "-2147483649", "432"},
      {"decimal", "99999999999", "432"},
      {"decimal", "000000000000001", " apilevel=1"},
      {"decimal", "0000000000000001", "432"},
      {"abits", " 64", " abits=64"},
      {"abits", "32", " abits=32"},
      {"class version", "32767", " version=32767"},
      {"class version", "32768", "66"},
      {"class version", "65537", "66"},
      {"class version", "4294967297", "432"},
      {"port", "0", " port=0"},
      {"port", "32767", " port=32767"},
      {"port", "32768", "66"},
      {"port", "-1", "66"},
      {"id", "0123456789abcdefABCDEF0123456789", " id=01234567-89ab-cdef-abcd-ef0123456789"},
      {"id", "01234567-89AB-cdef-abcd-ef0123456789", " id=01234567-89ab-cdef-abcd-ef0123456789"},
      {"id", "{01234567-89ab-cdef-abcd-ef0123456789}", "432"},
      {"id", "01234567-89ab-cdef-abcd-ef012345678", "432"},
      {"id", "01234567-89ab-cdef-abcd-ef012345678g", "432"},
      {"id", "0123456789abcdefABCDEF012345678\xc3\xa9", "432"},
      {"type", "executable", " type=\"executable\""},
      {"type", "sharedLib", "-type"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.place) + "=" + row.value);
    const std::string parsed = ParseValue(row.place, row.value);
    const std::string expected = row.expected;
    if (expected[0] == ' ') {
      EXPECT_NE(parsed.find(expected), std::string::npos) << parsed;
    } else if (expected[0] == '-') {
      EXPECT_EQ(parsed[0], '0') << parsed;
      EXPECT_EQ(parsed.find(" " + expected.substr(1) + "="), std::string::npos) << parsed;
    } else {
      EXPECT_EQ(parsed, expected);
    }
  }
}

}  // namespace
}  // namespace tarnmf::test
