#include "check/allowances.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <string>

#include "check/fixes.h"
#include "check/verdict.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::check {
namespace {

std::string Shown(const Finding& finding) {
  const Position at = finding.place.source->At(finding.place.span.begin);
  return fmt::format("{}:{} {}", at.line, at.column, Describe(finding.rule).name);
}

// What is told of an installation with one file of interest, and in parentheses what is allowed.
std::string Judged(const std::string& name, const std::string& text) {
  const test::TempDirectory directory;
  directory.Write("process/a.tmfx", "<tarnmanifest version=\"1\"/>");
  directory.Write("pack/other.tmfx", "<tarnmanifest version=\"1\"/>");
  directory.Write("pack/" + name, text);
  DiskFiles files;
  SettingsFinder settings(files);
  Report report = Check({directory.At("process"), {directory.At("pack")}}, files);
  const Verdict verdict = Judge(report, settings, Levels());
  std::string shown;
  for (const Finding& finding : verdict.findings)
    shown += Shown(finding) + "; ";
  for (const AllowedFinding& allowed : verdict.allowed)
    shown += fmt::format("({}: {}) ", Shown(allowed.finding), allowed.reason);
  return shown;
}

constexpr char kRoot[] = "<tarnmanifest version=\"1\">\n";
constexpr char kEnd[] = "</tarnmanifest>";
// A warning about the name of the module.
constexpr char kOdd[] = "<runnable moduleref=\"gone\"/>\n";

TEST(Allowances, CoverWhatStandsNext) {
  const std::string allow = "<!-- tarnmf: allow runnable-module-unknown (why) -->";
  const std::string root = kRoot;
  const struct {
    std::string name;
    std::string text;
    std::string judged;
  } rows[] = {
      {"the next element and no other", root + allow + "\n" + kOdd + kOdd + kEnd,
       "4:22 runnable-module-unknown; (3:22 runnable-module-unknown: why) "},
      {"all that the next element holds",
       root + allow + "<!-- more -->\n<runnables>" + kOdd + kOdd + "</runnables>" + kEnd,
       "(3:33 runnable-module-unknown: why) (4:22 runnable-module-unknown: why) "},
      {"the whole file",
       "<!--tarnmf:allow\n not-a-number,runnable-module-unknown,\n stray-text-->" + root + kOdd +
           "x" + kEnd,
       "2:2 allow-unused; (4:22 runnable-module-unknown: ) (5:1 stray-text: ) "},
      {"the innermost one counts",
       root + allow + "\n<runnables>\n" + allow + kOdd + "</runnables>" + kEnd,
       "2:20 allow-unused; (4:74 runnable-module-unknown: why) "},
      {"nothing stands next", root + kOdd + allow + kEnd,
       "2:22 runnable-module-unknown; 3:20 allow-unused; "},
      {"errors stay",
       root + "<!-- tarnmf: allow attribute-missing, clas-hidden -->\n<module/>" + kEnd,
       "2:20 allow-unknown; 2:39 allow-unknown; 3:2 attribute-missing; 3:2 attribute-missing; "},
      {"a slip of the pen, and prose",
       root + "<!-- tarnmf: alow -->\n<!-- tarnmf: the service -->\n<!-- tarnmf: allow -->\n" +
           kEnd,
       "2:14 allow-unknown; 4:14 allow-unknown; "},
      {"a finding about an allowance",
       root + "<!-- tarnmf: allow allow-unused -->\n<modules>" + allow + "</modules>" + kEnd,
       "(3:29 allow-unused: ) "},
      {"a file that is not judged to its end", root + allow + "\n<modules>",
       "3:10 not-well-formed; "},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Judged("a.tmfx", row.text), row.judged) << row.name;

  EXPECT_EQ(Judged(".installed",
                   "# tarnmf: allow layout-key-unknown (old)\nbse = 1\n"
                   "# tarnmf: allow layout-key-unknown, layout-bits\nbits = 64\nbse = 1\n"
                   "# tarnmf: alow x\n"),
            "3:17 allow-unused; 3:37 allow-unused; 5:1 layout-key-unknown; 6:11 allow-unknown; "
            "(2:1 layout-key-unknown: old) ");
}

// Whatever is deleted for it, the rest of the list and of the file stays.
TEST(Allowances, AreDeletedWithoutAUse) {
  const std::string root = kRoot;
  const struct {
    std::string text;
    std::string fixed;
  } rows[] = {
      {root + "  <!-- tarnmf: allow stray-text (x) -->\n" + kEnd, root + kEnd},
      {root + "<!-- tarnmf: allow stray-text --> <modules/>" + kEnd, root + " <modules/>" + kEnd},
      {root + "<!-- tarnmf: allow stray-text, text-cut,runnable-module-unknown (x)-->" + kOdd +
           kEnd,
       root + "<!-- tarnmf: allow runnable-module-unknown (x)-->" + kOdd + kEnd},
      {root + "<!-- tarnmf: allow runnable-module-unknown, text-cut-->" + kOdd + kEnd,
       root + "<!-- tarnmf: allow runnable-module-unknown-->" + kOdd + kEnd},
      {root + "<!-- tarnmf: allow class-hidden, stray-text -->" + kEnd,
       root + "<!-- tarnmf: allow class-hidden -->" + kEnd},
      // On another machine, or in another installation, it may have a use.
      {root + "<!-- tarnmf: allow file-missing -->" + kEnd,
       root + "<!-- tarnmf: allow file-missing -->" + kEnd},
  };
  for (const auto& row : rows) {
    const test::TempDirectory directory;
    const std::string path = directory.Write("pack/a.tmfx", row.text);
    DiskFiles files;
    SettingsFinder settings(files);
    const FixOutcome outcome = Fix({"", {directory.At("pack")}}, files, settings, Levels());
    EXPECT_EQ(outcome.files.empty() ? row.text : outcome.files[0].after, row.fixed);
  }
}

}  // namespace
}  // namespace tarnmf::check
