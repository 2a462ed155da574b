// SPDX-License-Identifier: Apache-2.0
// Reads and scans.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/host/system_names.h"
#include "platform/runtime.h"
#include "tests/support/documents.h"
#include "tests/support/environment.h"
#include "tests/support/everything.h"
#include "tests/support/system_names.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

using Json = nlohmann::ordered_json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(Read, PrintsTheWholeRecords) {
  const TempDirectory directory;
  const Outcome outcome =
      RunTool("read --loadpoint /here " + directory.Write("a.tmfx", kEverything));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "");
  Json actual = Json::parse(outcome.out);
  // The id of a nested module without one is fresh every time.
  Json& nested = actual["data"]["modules"][3]["id"];
  EXPECT_EQ(nested, actual["data"]["classes"][0]["sides"][2]["moduleref"]);
  actual["data"]["classes"][0]["sides"][2]["moduleref"] = nested = "generated";
  const Json expected = Json::parse(ReadFile(TARNMF_TEST_DATA "/everything.json"));
  EXPECT_EQ(actual.dump(1), expected.dump(1));
}

// Whatever the system makes of line ends.
TEST(LanguageServer, CountsTheBytesOfItsMessages) {
  const std::string body =
      R"({"jsonrpc":"2.0","id":1,"method":"initialize","params":{"capabilities":{}}})";
  const auto framed = [](std::size_t size) {
    return "Content-Length: " + std::to_string(size) + "\r\n\r\n";
  };
  const std::string out = RunTool("lsp", framed(body.size()) + body).out;
  const std::size_t begin = out.find('{');
  ASSERT_NE(begin, out.npos);
  EXPECT_EQ(out.substr(0, begin), framed(out.size() - begin));
}

#if defined(TARNMF_SAMPLES)
// One of the samples' programs, which prints what it is started with, stands in for the program that
// draws graphs.
TEST(OtherPrograms, AreFoundInThePathAndGivenTheirArguments) {
  namespace fs = std::filesystem;
  const TempDirectory root;
  root.Write("platform/a.tmfx", InRoot(""));
  root.Write("a b/x", "");
  const std::string suffix = kSystemNames.programSuffix;
  fs::copy_file(TARNMF_SAMPLES + InSystemNames("/platform/linux-x64/bin/workstation-host") + suffix,
                root.Path() / "a b" / ("dot" + suffix));
  const std::string before = btk_getenv("PATH");
  SetVariable("PATH", (root.At("a b") + (suffix.empty() ? ":" : ";") + before).c_str());
  const std::string out = RunTool("graph --svg --loadpoint " + root.At("platform")).out;
  SetVariable("PATH", before.c_str());
  EXPECT_THAT(out, testing::AllOf(HasSubstr("\n-Tsvg"), HasSubstr("graph.dot")));
}

// The installations that come with the sources, as they are staged for the demo.
TEST(Samples, ResolvePreloadAndOverride) {
  const std::string samples = TARNMF_SAMPLES;
  const std::string scanned = " --loadpoint " + samples + "/platform --add " + samples +
                              "/imaging-pack --add " + samples + "/site-overrides/manifests";
  const Outcome outcome = RunTool("scan --json" + scanned);
  ASSERT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.errors, "");
  // Nothing in it changes from run to run.
  EXPECT_EQ(RunTool("scan --json" + scanned).out, outcome.out);
  EXPECT_THAT(outcome.out, HasSubstr("agent side of 2c9d0b1e-6f35-47a4-8a10-5be2f0c40001"));
  EXPECT_EQ(RunTool("scan --preload" + scanned).errors, "sample: ws.journal is loaded\n");
  const Json output = Json::parse(outcome.out);
  std::vector<std::string> unresolved;
  std::vector<std::string> fallbacks;
  std::vector<std::string> answers;
  for (const Json& step : output["steps"]) {
    for (const Json& module : step["modules"]) {
      if (module["file"].is_null()) unresolved.push_back(module["id"]);
      if (module["fallback"] == true) fallbacks.push_back(module["id"]);
    }
    for (const Json& filed : step["filed"]["classes"]) {
      if (filed["commonname"] == "ImageStore") answers.push_back(filed["why"].dump());
      if (filed["commonname"] == "Workbench") {
        EXPECT_EQ(filed["why"], "not filed: no service hosts it");
      }
    }
  }
  EXPECT_THAT(unresolved, ElementsAre("ws.dongle", "ws.profiles"));
  EXPECT_THAT(fallbacks, ElementsAre("pack.filter.server"));
  EXPECT_THAT(answers, ElementsAre("null", HasSubstr("version 5 in"), "null", "null"));

  // A switch and a service that the conditions of one more library ask for.
  const std::string list = "list loadpoints --preload" + scanned;
  for (const char* condition : {" --option 7b1f64c0-52a8-4be1-9d3e-3a0c6f2d0a01=1",
                                " --service 7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001"})
    EXPECT_THAT(RunTool(list + condition).errors, HasSubstr("ws.diagnostics")) << condition;
  for (const char* condition : {" --option 7b1f64c0-52a8-4be1-9d3e-3a0c6f2d0a01=0",
                                " --service 7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1002"})
    EXPECT_THAT(RunTool(list + condition).errors, Not(HasSubstr("ws.diagnostics"))) << condition;
}
#endif

}  // namespace
}  // namespace tarnmf::test
