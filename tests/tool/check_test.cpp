// SPDX-License-Identifier: Apache-2.0
// "tarnmf check" and "tarnmf explain" as their users run them.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "tests/support/system_names.h"
#include "tests/tool/check_command.h"

namespace tarnmf::test {
namespace {

using Json = nlohmann::ordered_json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

TEST_F(CheckCommand, PrintsFindingsInAllForms) {
  Write("pack/a,1.tmfx", kWrong);
  Write("pack/b.tmfx", kWarned);
  const Outcome json = RunTool("check --json pack");
  EXPECT_EQ(json.status, 1);
  EXPECT_EQ(Json::parse(json.out).dump(1) + "\n",
            InSystemNames(ReadFile(TARNMF_TEST_DATA "/check.json")));
  EXPECT_EQ(RunTool("check pack").out, InSystemNames(ReadFile(TARNMF_TEST_DATA "/check.txt")));
  // What is told of the files is told once; the second load point is one finding more.
  EXPECT_EQ(Json::parse(RunTool("check --json pack pack").out).size(),
            Json::parse(json.out).size() + 1);
  EXPECT_EQ(RunTool("check --github pack").out,
            InSystemNames(ReadFile(TARNMF_TEST_DATA "/check.github")));
}

TEST_F(CheckCommand, CutsTheTextForm) {
  std::string many = "<tarnmanifest version=\"1\">";
  for (int i = 0; i < 30; ++i)
    many += fmt::format("<runnable moduleref=\"gone\xc2\x9b\"/>{}", std::string(100, ' '));
  Write("pack/a.tmfx", many + "</tarnmanifest>");
  const std::string text = RunTool("check --max 4 pack").out;
  EXPECT_THAT(text, EndsWith("and 26 more [runnable-module-unknown]\n30 warnings\n"));
  EXPECT_THAT(text, HasSubstr("  ...  "));
  EXPECT_THAT(text, Not(HasSubstr("\xc2\x9b")));
  EXPECT_LT(text.size(), 4000U);
  EXPECT_EQ(Json::parse(RunTool("check --max 4 --json pack").out).size(), 30U);
}

TEST_F(CheckCommand, SarifTellsRulesAndReasons) {
  Write("pack/a b.tmfx", kWrong);
  Write("pack/b.tmfx",
        "<tarnmanifest version=\"1\">\n<!-- tarnmf: allow runnable-module-unknown (by plan) -->\n"
        "<runnable moduleref=\"gone\"/><runnable moduleref=\"gone\"/></tarnmanifest>");
  const Outcome outcome = RunTool("check --sarif pack");
  const Json run = Json::parse(outcome.out)["runs"][0];
  std::vector<std::string> suppressed;
  std::vector<std::string> fingerprints;
  for (const Json& result : run["results"]) {
    const std::string rule = result["ruleId"];
    EXPECT_EQ(run["tool"]["driver"]["rules"][result["ruleIndex"].get<std::size_t>()]["id"], rule);
    for (const Json& suppression : result["suppressions"])
      suppressed.push_back(rule + ": " + suppression["justification"].get<std::string>());
    fingerprints.push_back(result["partialFingerprints"]["tarnmf/v1"]);
  }
  EXPECT_THAT(suppressed, testing::ElementsAre("runnable-module-unknown: by plan"));
  EXPECT_EQ(run["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"],
            "pack/a%20b.tmfx");
  // Another line before them changes no fingerprint.
  Write("pack/a b.tmfx", "<?pi?>\n" + std::string(kWrong));
  std::vector<std::string> later;
  const Json moved = Json::parse(RunTool("check --sarif pack").out);
  for (const Json& result : moved["runs"][0]["results"])
    later.push_back(result["partialFingerprints"]["tarnmf/v1"]);
  EXPECT_EQ(later, fingerprints);
}

// Corrects as it stands and has nothing left to do afterwards.
TEST_F(CheckCommand, FixesWhatIsCertain) {
  const std::string head = "\xef\xbb\xbf<?xml version=\"1.0\"?>\r\n<tarnmodulemanifest ";
  const std::string wrong = head +
                            "version=\"1.0\">\r\n<module id=\"a\" name=\"a\" priavte=\"1\"/>\r\n"
                            "<moduel id=\"b\" name=\"b\"></moduel>\r\n</tarnmodulemanifest>\r\n";
  const std::string unclosed =
      "<tarnmanifest version=\"1\"><module id=\"d\" name=\"b\" private=\"1\"/>";
  Write("pack/a.tmfx", wrong);
  Write("pack/c.tmfx", unclosed);
  EXPECT_NE(RunTool("check --diff pack").out, "");
  EXPECT_EQ(ReadFile("pack/a.tmfx"), wrong);
  const Outcome first = RunTool("check --fix pack");
  EXPECT_EQ(first.status, 1);
  EXPECT_THAT(first.errors, HasSubstr("pack/a.tmfx: "));
  EXPECT_EQ(ReadFile("pack/a.tmfx"),
            head +
                "version=\"1\">\r\n<modules><module id=\"a\" name=\"a\" private=\"yes\"/>\r\n"
                "<module id=\"b\" name=\"b\"></module></modules>\r\n</tarnmodulemanifest>\r\n");
  EXPECT_EQ(ReadFile("pack/c.tmfx"), unclosed);
  const Outcome second = RunTool("check --fix pack");
  EXPECT_EQ(second.out, first.out);
  EXPECT_EQ(second.errors, "");
  EXPECT_EQ(RunTool("check --diff pack").out, "");
}

#if defined(TARNMF_SAMPLES)
// As they stand in the sources, without their libraries, and as they are staged with them.
TEST(Samples, AreSilent) {
  for (const std::string& samples :
       {std::string(TARNMF_SOURCES "/samples"), std::string(TARNMF_SAMPLES)}) {
    const Outcome outcome = RunTool(fmt::format(
        "check --strict --loadpoint {0}/platform {0}/imaging-pack {0}/site-overrides/manifests",
        samples));
    EXPECT_EQ(outcome.out + outcome.errors, "");
    EXPECT_EQ(outcome.status, 0);
  }
}
#endif

}  // namespace
}  // namespace tarnmf::test
