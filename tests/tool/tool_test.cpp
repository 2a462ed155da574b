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
#include "tests/support/case_file.h"
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
using testing::StartsWith;

constexpr char kClassId[] = "00000000-0000-0000-0000-0000000000c1";
constexpr char kServiceId[] = "00000000-0000-0000-0000-0000000000e1";

// A service class that is hosted by a service of the same load point.
std::string HostedClass(const std::string& module, int version) {
  return InRoot("<module id=\"" + module + "\" name=\"" + module + "\"/><class id=\"" + kClassId +
                "\" affinity=\"service\" commonname=\"Render\"><serviceside moduleref=\"" + module +
                "\" svcid=\"" + kServiceId + "\" xsid=\"" + kServiceId +
                "\" exposed=\"yes\"/></class><runnable moduleref=\"" + module +
                "\"><service id=\"" + kServiceId + "\" commonname=\"Host\" version=\"" +
                std::to_string(version) + "\" exposed=\"yes\"/></runnable>");
}

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

TEST(Read, NamesTheFileThatFails) {
  const TempDirectory directory;
  const std::string good = directory.Write("good.tmfx", InRoot("<module id=\"m\" name=\"n\"/>"));
  const std::string bad = directory.Write("bad.tmfx", InRoot("<module id=\"m\"/>"));
  const struct {
    std::string files;
    Json code;
    std::string named;
  } rows[] = {
      {good + " " + bad, 1, "bad.tmfx:1:28: error: <module> needs"},
      {good + " " + directory.At() + "/none.tmfx", 1, "none.tmfx: the file cannot be read"},
      {directory.Write("v.tmfx", "<?xml version=\"1.  \"?>" + InRoot("")) + " " + bad, nullptr,
       "the XML library says"},
      {directory.Write("r.tmfx", InRoot("<module resolvepath=\"\"/>")), 34, "resolvepath"},
      {directory.Write("w.tmfx", InRoot("<module id=\"m\" name=\"n\"/>") + "<"), 0,
       "[not-well-formed]"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = RunTool("read " + row.files);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr(row.named));
    const Json output = Json::parse(outcome.out);
    EXPECT_EQ(output["code"], row.code);
    EXPECT_EQ(output.contains("exception"), row.code.is_null());
  }
}

TEST(Usage, IsChecked) {
  for (const FileCase& row : ReadCaseFile(TARNMF_CASES "/usage.cases")) {
    const Outcome outcome = RunTool(row.input);
    EXPECT_EQ(outcome.status, 2) << row.name;
    EXPECT_THAT(outcome.errors, StartsWith("tarnmf: " + row.result)) << row.name;
  }
  EXPECT_EQ(RunTool("--help").status, 0);
  EXPECT_EQ(RunTool("find class --help").status, 0);
  EXPECT_THAT(RunTool("--version").out, HasSubstr("1."));
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

TEST(Scan, ShowsWhatIsRegisteredAndFiled) {
  const TempDirectory root;
  root.Write("platform/a.tmfx", HostedClass("base", 1));
  root.Write("platform/linux-x64/libbase.so", "");
  root.Write("pack/a.tmfx", HostedClass("over", 2));
  root.Write("pack/.installed",
             "base = \"files\"\nscope = 00000000-0000-0000-0000-0000000000aa\n"
             "layout += 64 { \"x\" | | \"lib\" }\n");
  root.Write("pack/files/libover.so", "");
  const std::string scanned = " --loadpoint " + root.At("platform") + " --add " + root.At("pack");
  const Outcome outcome = RunTool("scan --json" + scanned);
  ASSERT_EQ(outcome.status, 0) << outcome.errors;
  const Json output = Json::parse(outcome.out);
  ASSERT_EQ(output["steps"].size(), 2U);
  const Json& pack = output["steps"][1];
  EXPECT_EQ(pack["modules"][0]["file"], root.At("pack/files/libover.so"));
  EXPECT_EQ(pack["scope"], "00000000-0000-0000-0000-0000000000aa");
  EXPECT_EQ(pack["registered"]["layouts"][0]["list1"], Json({"lib"}));
  EXPECT_EQ(pack["registered"]["interfaces"][0]["id"], kServiceId);
  EXPECT_EQ(pack["registered"]["services"][0]["version"], 2);
  EXPECT_EQ(pack["filed"]["classes"][0]["answers"], true);
  EXPECT_EQ(pack["filed"]["services"].size(), 1U);
  EXPECT_EQ(output["steps"][0]["modules"][0]["file"], root.At("platform/linux-x64/libbase.so"));

  const Outcome twice =
      RunTool("scan" + scanned + " --add " + root.At("pack") + " --add /nowhere/x");
  EXPECT_EQ(twice.status, 1);
  EXPECT_THAT(twice.errors, HasSubstr("[duplicate-loadpoint, 261]"));
  EXPECT_THAT(twice.errors, HasSubstr("/nowhere/x: there is no such directory"));

  const std::string text = RunTool("scan --all" + scanned).out;
  EXPECT_THAT(text, HasSubstr(InSystemNames("libover.so")));
  EXPECT_THAT(text, HasSubstr("scope 00000000-0000-0000-0000-0000000000aa"));

  // A caller of the pack's scope gets the pack's class, any other the platform's.
  EXPECT_THAT(RunTool("find class Render" + scanned).out, HasSubstr(InSystemNames("libbase.so")));
  EXPECT_THAT(RunTool("find class Render --scope 000000000000000000000000000000aa" + scanned).out,
              HasSubstr(InSystemNames("libover.so")));
  const Outcome missing = RunTool("find class render" + scanned);
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.errors, HasSubstr("no class is called \"render\"; did you mean \"Render\"?"));
  const Outcome tooNew = RunTool("find class Render --version 3" + scanned);
  EXPECT_EQ(tooNew.status, 1);
  EXPECT_THAT(tooNew.errors,
              HasSubstr("scope 00000000-0000-0000-0000-0000000000aa, service version 2"));
  const std::string find = std::string("find service ") + kServiceId + scanned;
  EXPECT_EQ(Json::parse(RunTool(find + " --json").out)["service"]["version"], 1);
  EXPECT_EQ(Json::parse(
                RunTool(find + " --json --in " + root.At("pack/files")).out)["service"]["version"],
            2);
  const Outcome noService = RunTool("find service 00000000-0000-0000-0000-0000000000e7" + scanned);
  EXPECT_EQ(noService.status, 1);
  EXPECT_THAT(noService.errors, HasSubstr(std::string("did you mean \"") + kServiceId));
  EXPECT_EQ(Json::parse(RunTool("list loadpoints --json" + scanned).out)["loadpoints"].size(), 2U);
  EXPECT_EQ(Json::parse(RunTool("list classes --json" + scanned).out)["classes"].size(), 2U);
  EXPECT_EQ(Json::parse(RunTool("list services --json" + scanned).out)["services"].size(), 2U);
}

TEST(Scan, SaysWhyAStepFailed) {
  const std::string module = "<module id=\"m\" name=\"n\"/>";
  const struct {
    std::string manifest;
    std::string installed;
    std::string place;
    std::string reason;
    std::string outcome;
  } rows[] = {
      {InRoot(module + "<class id=\"" + kClassId + "\"><clientside moduleref=\"gone\"/></class>"),
       "", "a.tmfx:1:", "no manifest here declares module \"gone\" [module-unknown, 42]",
       "code 42"},
      {InRoot(module), "bits = 99999999999\n", ".installed:1:8:", "[layout-syntax, 432]",
       "code 432"},
      {"<other/>", "", "a.tmfx:1:2:", "[element-unknown, 42]", "code 42"},
      // The library reads what stands before the fault, and is content.
      {"<tarnmanifest version=\"1\"><module id=\"m\" name=\"n\"/><", "",
       "a.tmfx:1:", "[not-well-formed]", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.reason);
    const TempDirectory root;
    root.Write("good/sub/a.tmfx", InRoot(module));
    root.Write("pack/sub/0.tmfx", InRoot("<module id=\"first\" name=\"n\"/>"));
    root.Write("pack/sub/a.tmfx", row.manifest);
    root.Write("pack/sub/.installed", row.installed);
    const Outcome outcome =
        RunTool("scan --add " + root.At("pack/sub") + " --add " + root.At("good/sub"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, StartsWith(root.At(std::string("pack/sub/") + row.place)));
    EXPECT_THAT(outcome.errors, HasSubstr(row.reason));
    EXPECT_EQ(outcome.errors.find("refused with") == std::string::npos, row.outcome.empty());
    EXPECT_THAT(outcome.errors, HasSubstr(row.outcome));
    EXPECT_THAT(outcome.out, HasSubstr("1 failed)"));
  }
}

// Nothing that a document says looks like a line of the report.
TEST(Scan, ShowsNamesOnTheirLines) {
  const TempDirectory root;
  root.Write("pack/sub/a.tmfx",
             InRoot("<module id=\"m&#10;FAILED\" name=\"n&#10;FAILED\"/><class id=\"" +
                    std::string(kClassId) + "\" commonname=\"c&#10;FAILED&#x9b;1m\">" +
                    "<clientside moduleref=\"m&#10;FAILED\"/></class>"));
  const std::string scanned = " --add " + root.At("pack/sub");
  for (const char* command : {"scan --all", "list classes"}) {
    const std::string out = RunTool(command + scanned).out;
    EXPECT_THAT(out, HasSubstr("c?FAILED??1m")) << command;
    EXPECT_THAT(out, Not(HasSubstr("\nFAILED")));
  }
}

TEST(Scan, FailsForDirectoriesThatCannotBeRead) {
  const TempDirectory root;
  const std::string good = root.Write("good/a.tmfx", InRoot("<module id=\"m\" name=\"n\"/>"));
  const struct {
    std::string arguments;
    const char* problem;
  } rows[] = {
      {"--loadpoint /nowhere", "process load point /nowhere: there is no such directory"},
      {"--add /nowhere", "installation /nowhere: there is no such directory"},
      {"--add " + good, "a.tmfx: this is no directory"},
  };
  for (const auto& row : rows) {
    for (const char* command : {"scan ", "list classes ", "find class x "}) {
      const Outcome outcome = RunTool(command + row.arguments);
      EXPECT_EQ(outcome.status, 1) << row.arguments;
      EXPECT_THAT(outcome.errors, HasSubstr(row.problem));
    }
  }
}

TEST(Scan, SaysWhyAFileIsNotLookedForOrLoaded) {
  const TempDirectory root;
  root.Write("p/a.tmfx", InRoot("<module id='up' name='x' path='../q'/>"
                                "<module id='cut' name='cut'><preload by='anyone'/></module>"));
  root.Write("p/libcut.so", "\x7f\x45LF");
  const std::string process = " --loadpoint " + root.At("p");
  const std::string why = InSystemNames(
      R"(".." in "../q/libx.so" may lead out of the load point; "forcepath" admits it)");
  const std::string text = RunTool("scan --all --preload" + process).out;
  EXPECT_THAT(text, HasSubstr("\n    up: " + why));
  EXPECT_THAT(text, HasSubstr("not resolved: " + why));
  EXPECT_THAT(text, HasSubstr(InSystemNames("libcut.so: ")));
  const Json output = Json::parse(RunTool("scan --json" + process).out);
  EXPECT_EQ(output["steps"][0]["modules"][0]["refusals"], Json({why}));
  for (const char* command : {"check", "why preload up"})
    EXPECT_THAT(RunTool(command + process).out, HasSubstr(why));
}

TEST(Scan, SkipsInstallationsWithoutAProcess) {
  const Outcome outcome = RunTool("scan none.tmfx --add somewhere --json");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, HasSubstr("none.tmfx:1:1: error: the file cannot be read"));
  EXPECT_EQ(Json::parse(outcome.out)["skipped"], Json({"somewhere"}));
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
