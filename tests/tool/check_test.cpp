// "tarnmf check" and "tarnmf explain" as their users run them.
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "platform/filesystem.h"
#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

// A fresh directory in which the tool runs, so that paths are short and always the same.
class CheckCommand : public testing::Test {
 protected:
  CheckCommand() { fs::current_path(directory_.Path()); }
  ~CheckCommand() override { fs::current_path(home_); }

  void Write(const std::string& path, const std::string& text) { directory_.Write(path, text); }

 private:
  const fs::path home_ = fs::current_path();
  const TempDirectory directory_;
};

constexpr char kGood[] = "<tarnmanifest version=\"1\"/>\n";
constexpr char kWarned[] =
    "<tarnmanifest version=\"1\">\n"
    "  <runnable moduleref=\"gone\"/>\n"
    "</tarnmanifest>\n";
constexpr char kWrong[] =
    "<tarnmanifest version=\"1\">\n"
    "\t<module id=\"\xc3\xa9\" nmae=\"b\" private=\"1\"/>\n"
    "  <module id=\"\xc3\xa9\" name=\"c\"/>\n"
    "</tarnmanifest>\n";

TEST_F(CheckCommand, ExitStatusSaysWhatWasFound) {
  Write("good/a.tmfx", kGood);
  Write("warned/a.tmfx", kWarned);
  Write("wrong/a.tmfx", kWrong);
  Write("set/.tarnmf-check", "runnable-module-unknown = error\n");
  Write("set/pack/a.tmfx", kWarned);
  Write("unset/.tarnmf-check", "# all of it\n\nclas-hidden = off\nbad-id = off\nallow\n");
  Write("unset/pack/a.tmfx", kGood);
  fs::create_symlink("loop", "loop");
  Write("lost/.tarnmf-check", "loadpoint = loop\n");
  Write("lost/pack/a.tmfx", kGood);
  fs::create_symlink("loop", "lost/loop");
  const struct {
    std::string arguments;
    int status;
    std::string errors;
  } rows[] = {
      {"good", 0, ""},
      {"--loadpoint good", 0, ""},
      {"good/a.tmfx", 0, ""},
      {"warned", 0, ""},
      {"--strict warned", 1, ""},
      {"--strict warned --rule runnable-module-unknown=off", 0, ""},
      {"warned --rule runnable-module-unknown=error", 1, ""},
      {"set/pack", 1, ""},
      {"set/pack --rule runnable-module-unknown=info", 0, ""},
      {"good wrong", 1, ""},
      {"wrong --diff", 1, ""},
      {"", 2, "is needed"},
      {"nowhere good", 2, "nowhere: there is no such directory or file"},
      {"--loadpoint nowhere good", 2, "nowhere: there is no such directory"},
      {"/dev/null", 2, "neither a directory nor a file"},
      {"'no\x1b[31m\xe2\x80\xae\xff'", 2, "tarnmf: no?[31m????: there is no such"},
      {"loop good", 2, "loop: it cannot be read: "},
      {"--loadpoint loop good", 2, "loop: it cannot be read: "},
      {"lost/pack", 2, "lost/.tarnmf-check: the loadpoint lost/loop: it cannot be read: "},
      {"good --rule clas-hidden=off", 2, "did you mean \"class-hidden\"?"},
      {"good --rule bad-id=warning", 2, "\"bad-id\" cannot be lowered"},
      {"good --rule class-hidden=loud", 2, "expected off, info, warning, error"},
      {"good --json --sarif", 2, ""},
      {"good --fix --diff", 2, ""},
      {"good --max -1", 2, "\"-1\" is no count"},
      {"unset/pack", 2,
       "unset/.tarnmf-check:3:1: there is no rule \"clas-hidden\"; did you mean \"class-hidden\"?\n"
       "tarnmf: unset/.tarnmf-check:4:1: \"bad-id\" cannot be lowered"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = RunTool("check " + row.arguments);
    EXPECT_EQ(outcome.status, row.status) << row.arguments << "\n" << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr(row.errors)) << row.arguments;
    EXPECT_EQ((row.status == 2 ? outcome.out : outcome.errors), "") << row.arguments;
  }
}

// A directory that may not be listed is no clean one.
TEST_F(CheckCommand, RefusesClosedDirectories) {
  Write("closed/a.tmfx", kWrong);
  fs::permissions("closed", fs::perms::owner_exec);
  fs::permissions(".", fs::perms::all);
  const std::string as = geteuid() == 0 ? "setpriv --reuid 65534 --clear-groups " : "";
  if (RunCommand(as + TARNMF_TOOL " --version").status != 0)
    GTEST_SKIP() << "nobody else can run the tool";
  for (const char* arguments : {"closed", "--loadpoint closed", "--fix closed"}) {
    const Outcome outcome = RunCommand(as + TARNMF_TOOL " check " + arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, "tarnmf: closed: it cannot be read: Permission denied\n");
  }
}

TEST_F(CheckCommand, PrintsFindingsInAllForms) {
  Write("pack/a,1.tmfx", kWrong);
  Write("pack/b.tmfx", kWarned);
  const Outcome json = RunTool("check --json pack");
  EXPECT_EQ(json.status, 1);
  EXPECT_EQ(Json::parse(json.out).dump(1) + "\n", ReadFile(TARNMF_TEST_DATA "/check.json"));
  EXPECT_EQ(RunTool("check pack").out, ReadFile(TARNMF_TEST_DATA "/check.txt"));
  // What is told of the files is told once; the second load point is one finding more.
  EXPECT_EQ(Json::parse(RunTool("check --json pack pack").out).size(),
            Json::parse(json.out).size() + 1);
  EXPECT_EQ(RunTool("check --github pack").out, ReadFile(TARNMF_TEST_DATA "/check.github"));
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

TEST_F(CheckCommand, SarifFollowsItsSchema) {
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

  Write("log.sarif", outcome.out);
  if (RunCommand("python3 -c 'import jsonschema'").status != 0) {
    GTEST_SKIP() << "python3-jsonschema is not installed";
  }
  const Outcome validation = RunCommand("python3 " TARNMF_TEST_DATA "/sarif/validate.py log.sarif");
  EXPECT_EQ(validation.status, 0) << validation.errors;
}

// Corrects as it stands, keeps what it must not touch, and has nothing left to do afterwards.
TEST_F(CheckCommand, FixesWhatIsCertain) {
  const std::string head = "\xef\xbb\xbf<?xml version=\"1.0\"?>\r\n<tarnmodulemanifest ";
  const std::string wrong = head +
                            "version=\"1.0\">\r\n<module id=\"a\" name=\"a\" priavte=\"1\"/>\r\n"
                            "<moduel id=\"b\" name=\"b\"></moduel>\r\n</tarnmodulemanifest>\r\n";
  Write("files/a.tmfx", wrong);
  Write("pack/b.tmfx",
        "<!DOCTYPE tarnmanifest []>\n<tarnmanifest version=\"1\">"
        "<module id=\"c\" name=\"b\" private=\"1\"/></tarnmanifest>");
  Write("pack/c.tmfx", "<tarnmanifest version=\"1\"><module id=\"d\" name=\"b\" private=\"1\"/>");
  Write("pack/d.tmfx",
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><tarnmanifest version=\"1\">"
        "<module id=\"e\" name=\"b\" private=\"1\"/></tarnmanifest>");
  fs::create_symlink("../files/a.tmfx", "pack/a.tmfx");
  ASSERT_EQ(chmod("files/a.tmfx", 0640), 0);
  const std::string untouched = "pack/b.tmfx pack/c.tmfx pack/d.tmfx";
  const std::string left = RunCommand("cat " + untouched).out;
  EXPECT_THAT(RunTool("check --json " + untouched).out,
              testing::AllOf(HasSubstr("bad-boolean"), Not(HasSubstr("\"safe\": true"))));
  const std::string diff = RunTool("check --diff pack").out;
  EXPECT_EQ(ReadFile("pack/a.tmfx"), wrong);
  const Outcome first = RunTool("check --fix pack");
  EXPECT_EQ(first.status, 1);
  EXPECT_THAT(first.errors, HasSubstr("pack/a.tmfx: "));
  const std::string fixed = ReadFile("files/a.tmfx");
  EXPECT_EQ(fixed, head +
                       "version=\"1\">\r\n<modules><module id=\"a\" name=\"a\" "
                       "private=\"yes\"/>\r\n<module id=\"b\" name=\"b\"></module></modules>"
                       "\r\n</tarnmodulemanifest>\r\n");
  EXPECT_TRUE(fs::is_symlink("pack/a.tmfx"));
  EXPECT_EQ(fs::status("files/a.tmfx").permissions(), fs::perms(0640));
  EXPECT_EQ(RunCommand("cat " + untouched).out, left);
  const Outcome second = RunTool("check --fix pack");
  EXPECT_EQ(second.out, first.out);
  EXPECT_EQ(second.errors, "");
  EXPECT_EQ(RunTool("check --diff pack").out, "");

  fs::remove("pack/a.tmfx");
  Write("pack/a.tmfx", wrong);
  Write("fix.diff", diff);
  ASSERT_EQ(std::system("git apply -p0 --whitespace=nowarn fix.diff"), 0);
  EXPECT_EQ(ReadFile("pack/a.tmfx"), fixed);
}

// Ended at whatever moment, or on a full disk, a correction leaves the old file or the new one, and
// nothing beside it that is taken for a manifest.
TEST_F(CheckCommand, FixesAFileAsAWholeOrNotAtAll) {
  std::string before = "<tarnmodulemanifest version=\"1\">\n<modules>\n";
  for (int i = 0; i < 500; ++i)
    before += fmt::format("<module id=\"m{0}\" name=\"m{0}\" private=\"1\"/>\n", i);
  before += "</modules>\n</tarnmodulemanifest>\n";
  std::string after;
  const auto fix = [&](const std::string& how) {
    fs::remove_all("pack");
    Write("pack/a.tmfx", before);
    const Outcome outcome = RunCommand(how + TARNMF_TOOL " check --fix pack");
    const std::string text = ReadFile("pack/a.tmfx");
    EXPECT_TRUE(text == before || after.empty() || text == after) << how;
    EXPECT_EQ(btkFSList(btkFSEntry("pack"), "*.tmfx").Count(), 1U);
    return outcome.errors;
  };
  const auto start = std::chrono::steady_clock::now();
  EXPECT_THAT(fix(""), HasSubstr("corrections applied: 500"));
  const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - start;
  after = ReadFile("pack/a.tmfx");
  // Blocks of 512 bytes, of which the last is begun.
  const auto blocks = static_cast<int>(after.size() / 512);
  for (int block = 1; block <= blocks; block += blocks / 8) {
    const std::string limit = fmt::format("ulimit -c 0; ulimit -f {}; ", block);
    EXPECT_THAT(fix("trap '' XFSZ; " + limit), HasSubstr("not fixed: ")) << block;
    EXPECT_EQ(std::distance(fs::directory_iterator("pack"), {}), 1) << block;
    fix(limit);  // killed while it writes
    EXPECT_EQ(ReadFile("pack/a.tmfx"), before) << block;
  }
  for (int i = 1; i <= 20; ++i)
    fix(fmt::format("timeout -s KILL {:.4f} ", whole.count() * i / 16));
}

TEST(Explain, KnowsRulesCodesAndTheGrammar) {
  const struct {
    std::string subject;
    int status;
    std::string said;
  } rows[] = {
      {"class-hidden", 0, "class-hidden (warning)"},
      {"bad-id", 0, "--fix corrects it"},
      {"42", 0, "code 42, unexpected"},
      {"261", 0, "attribute-twice: "},
      {"0", 0, "success"},
      {"43", 2, "there is no rule, code or element \"43\""},
      {"Preload", 0, "It stands in <module>, <platformmodule>."},
      {"tarnmanifest", 0, "It is the root of a document."},
      {"modules", 0, "It has no attributes."},
      {"clientside/multiplicity", 0, "keyword: one of the words given, in any letter case"},
      {"preload/name", 0, "by=\"executable\" needs \"name\" beside it (else code 1)."},
      {"preload/nmae", 2, "<preload> has no attribute \"nmae\"; did you mean \"name\"?"},
      {"clas-hidden", 2, "did you mean \"class-hidden\"?"},
      {"modul/x", 2, "did you mean \"module\""},
      {"", 2, "SUBJECT"},
  };
  for (const auto& row : rows) {
    const Outcome outcome = RunTool("explain " + row.subject);
    EXPECT_EQ(outcome.status, row.status) << row.subject;
    EXPECT_THAT(row.status == 0 ? outcome.out : outcome.errors, HasSubstr(row.said)) << row.subject;
  }
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
