#include <map>

#include "xml/parse.h"

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
    {"xsid", R"(<class id="$1" affinity="service"><serviceside xsid="%"/></class>)"},
    {"type", R"(<module id="m" name="n" type="%"/>)"},
};

std::string ParseValue(const std::string& place, const std::string& value) {
  std::string fragment = WithIds(kPlaces.at(place));
  fragment.replace(fragment.find('%'), 1, value);
  return ParseAndDump(InRoot(fragment));
}

TEST(Keywords, AreReadInAnyLetterCase) {
  const struct {
    const char* place;
    const char* field;
    std::vector<std::pair<const char*, int>> words;
  } rows[] = {
      {"affinity", "affinity", {{"generic", 0}, {"app", 1}, {"agent", 2}, {"service", 3}}},
      {"by", "by", {{"executable", 2}, {"service", 3}, {"client", 4}}},
      {"initstate", "initstate", {{"default", 0}, {"clean", 1}, {"inprocess", 2}}},
      {"csim", "csim", {{"opaque", 0}, {"classBased", 1}}},
      {"isolation", "isolation", {{"relaxed", 0}, {"strict", 1}}},
      {"managedtype", "managedtype", {{"generic", 0}, {"worker", 2}}},
      {"multiplicity",
       "multiplicity",
       {{"alwaysNew", 0}, {"singleInstance", -1}, {"perProcess", 2}, {"perLdp", 3}}},
      {"model", "model", {{"spawnOnly", 0}, {"managed", -1}}},
  };
  for (const auto& row : rows) {
    for (const auto& [word, number] : row.words) {
      SCOPED_TRACE(std::string(row.place) + "=" + word);
      // Defaults are not shown: 0 for most fields, the numbers marked -1 for the others.
      const bool isDefault = number == -1 || (number == 0 && std::string(row.field) != "model" &&
                                              std::string(row.field) != "multiplicity");
      const std::string shown = std::string(" ") + row.field + "=" + std::to_string(number);
      std::string upper = word;
      for (char& letter : upper)
        letter = static_cast<char>(std::toupper(letter));
      for (const std::string& value : {std::string(word), upper}) {
        const std::string parsed = ParseValue(row.place, value);
        EXPECT_EQ(parsed[0], '0') << parsed;
        EXPECT_EQ(parsed.find(isDefault ? std::string(" ") + row.field + "=" : shown) !=
                      std::string::npos,
                  !isDefault)
            << parsed;
      }
    }
    for (const char* bad :
         {"", " ", "generi", "genericx", "appp", "averyveryverylongword", "\xc3\xa9"})
      EXPECT_EQ(ParseValue(row.place, bad), "432") << row.place << "=" << bad;
    EXPECT_EQ(ParseValue(row.place, std::string(" ") + row.words[0].first), "432");
  }
}

TEST(Values, AreReadByTheirKind) {
  const struct {
    const char* place;
    const char* value;
    const char* expected;  // the code, or what the dump shows of the value; "-": nothing
  } rows[] = {
      {"boolean", "yes", " recover=1"},
      {"boolean", "TRUE", " recover=1"},
      {"boolean", "No", "-recover"},
      {"boolean", "false", "-recover"},
      {"boolean", "1", "432"},
      {"boolean", "falsee", "432"},
      {"boolean", "", "432"},
      {"flag", "true", " flags=1"},
      {"flag", "no", "-flags"},
      {"flag", "on", "432"},
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
      {"decimal", "", "432"},
      {"abits", " 64", " abits=64"},
      {"abits", "32", " abits=32"},
      {"abits", "48", "432"},
      {"abits", "", "432"},
      {"class version", "32767", " version=32767"},
      {"class version", "32768", "66"},
      {"class version", "-1", "66"},
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
      {"id", "", "432"},
      {"xsid", "x", "432"},
      {"type", "executable", " type=\"executable\""},
      {"type", "sharedLib", "-type"},
      {"type", "", "432"},
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
