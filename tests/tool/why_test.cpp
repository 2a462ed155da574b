// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>

#include "platform/host/system_names.h"
#include "tests/support/documents.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

using testing::HasSubstr;

constexpr char kPackScope[] = "00000000-0000-0000-0000-0000000000aa";

std::string Class(const std::string& id, const std::string& host) {
  return "<class id='0000000000000000000000000000000" + id +
         "' affinity='service' commonname='Render'>\n<serviceside moduleref='m' svcid='"
         "000000000000000000000000000000e" +
         id + "' " + host + "/></class>\n";
}

std::string Service(int version) {
  return "<runnable moduleref='m'><service id='000000000000000000000000000000e1' commonname='Host' "
         "version='" +
         std::to_string(version) + "'/></runnable>\n";
}

class Why : public testing::Test {
 protected:
  Why() {
    root_.Write("platform/a.tmfx", InRoot("\n<module id='m' name='m'><preload by='service' "
                                          "optionid='000000000000000000000000000000b1'/>\n"
                                          "<preload name='viewer'/></module>\n" +
                                          Class("1", "xsname='Host'") +
                                          Class("2", "xsname='Host' xsversion='9'") + Service(2)));
    root_.Write("platform/libm.so", "");
    for (const char* pack : {"new", "old"}) {
      root_.Write(std::string(pack) + "/m/b.tmfx",
                  InRoot("<module id='m' name='m'/>\n" + Class("1", "xsname='Host'") +
                         Service(pack[0] == 'n' ? 5 : 1)));
      root_.Write(std::string(pack) + "/m/.installed",
                  std::string("base = \"..\"\nscope = ") + kPackScope + "\n");
    }
  }

  Outcome Ask(const std::string& question) {
    return RunToolIn(root_.At(), "why " + question + " --loadpoint platform new/m old/m");
  }

  const TempDirectory root_;
};

TEST_F(Why, ShowsTheCandidatesOfAClassInOrder) {
  const std::string inScope = std::string("class Render --scope ") + kPackScope;
  const Outcome found = Ask(inScope);
  EXPECT_EQ(found.status, 0);
  EXPECT_EQ(found.out, std::string("class \"Render\" for callers of scope ") + kPackScope +
                           "\n"
                           "-> new/m/b.tmfx:2:2: found\n"
                           "     service version 5, of scope " +
                           kPackScope +
                           "\n"
                           "   platform/a.tmfx:4:2: new/m/b.tmfx:2:2 comes first: it is of the "
                           "scope itself\n"
                           "     service version 2, without a scope\n"
                           "   old/m/b.tmfx:2:2: new/m/b.tmfx:2:2 comes first: it is newer\n"
                           "     service version 1, of scope " +
                           kPackScope +
                           "\n"
                           "   platform/a.tmfx:6:2: not filed: no service of version 9 or newer is "
                           "called \"Host\"\n");
  const struct {
    std::string question;
    int status;
    const char* text;
  } rows[] = {
      {"class Render --version 3", 1, "platform/a.tmfx:4:2: service version 2 is older than 3"},
      {"class Render", 0, "it is for callers of scope 00000000"},
      {"class Render --limit -1", 1, "its oldest supported version 0 is above the limit -1"},
      {"class render", 1, "no class is called \"render\"; did you mean \"Render\"?"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = Ask(row.question);
    EXPECT_EQ(outcome.status, row.status) << row.question;
    EXPECT_THAT(outcome.out + outcome.errors, HasSubstr(row.text));
  }
  const auto json = nlohmann::json::parse(Ask(inScope + " --json").out);
  EXPECT_EQ(json["candidates"][1]["test"], "order");
  EXPECT_EQ(json["candidates"][0]["line"], 2);
}

TEST_F(Why, ShowsTheConditionsOfAPreload) {
  const std::string option = " --option 000000000000000000000000000000b1=";
  const struct {
    std::string process;
    int status;
    const char* text;
  } rows[] = {
      {"", 1,
       "  false: condition at platform/a.tmfx:2:26\n    false: the process runs in a service"},
      {std::string(" --program viewer") + kSystemNames.programSuffix, 0,
       "  true: condition at platform/a.tmfx:3:2\n    true: the program"},
      {" --service 000000000000000000000000000000e1" + option + "0", 1, "    false: option"},
      {" --service 000000000000000000000000000000e1" + option + "1", 0, "    true: option"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = Ask("preload m" + row.process);
    EXPECT_EQ(outcome.status, row.status) << row.process;
    EXPECT_THAT(outcome.out, HasSubstr(row.text));
    EXPECT_THAT(outcome.out, HasSubstr("new/m/b.tmfx:1:"));
    EXPECT_THAT(outcome.out, HasSubstr("  false: it belongs to the process's own load point"));
  }
  EXPECT_THAT(Ask("preload n").errors, HasSubstr("no module has the id \"n\"; declared are: m"));

  root_.Write("platform/b.tmfx", "<other/>");
  const Outcome refused = Ask("preload m --program viewer");
  EXPECT_EQ(refused.status, 1);
  EXPECT_THAT(refused.out, HasSubstr("  false: the library accepts its load point"));
  EXPECT_THAT(refused.errors, HasSubstr("platform/b.tmfx:1:2: error: "));
}

}  // namespace
}  // namespace tarnmf::test
