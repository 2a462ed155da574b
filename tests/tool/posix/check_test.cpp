// SPDX-License-Identifier: Apache-2.0
// What "check" makes of a POSIX file system, and others of what it writes.
#include <chrono>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/filesystem.h"
#include "tests/tool/check_command.h"

namespace tarnmf::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

TEST_F(CheckCommand, TellsWhatIsNoDirectoryAndNoFile) {
  Write("good/a.tmfx", kGood);
  fs::create_symlink("loop", "loop");
  Write("lost/.tarnmf-check", "loadpoint = loop\n");
  Write("lost/pack/a.tmfx", kGood);
  fs::create_symlink("loop", "lost/loop");
  const char* const rows[][2] = {
      {"/dev/null", "neither a directory nor a file"},
      {"'no\x1b[31m\xe2\x80\xae\xff'", "tarnmf: no?[31m????: there is no such"},
      {"loop good", "loop: it cannot be read: "},
      {"--loadpoint loop good", "loop: it cannot be read: "},
      {"lost/pack", "lost/.tarnmf-check: the loadpoint lost/loop: it cannot be read: "},
  };
  for (const auto& [arguments, told] : rows) {
    const Outcome outcome = RunTool(std::string("check ") + arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.errors, HasSubstr(told));
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

TEST_F(CheckCommand, FixesKeepLinksAndModesAndAreAPatch) {
  Write("files/a.tmfx", kWrong);
  fs::create_directory("pack");
  fs::create_symlink("../files/a.tmfx", "pack/a.tmfx");
  ASSERT_EQ(chmod("files/a.tmfx", 0640), 0);
  Write("fix.diff", RunTool("check --diff pack").out);
  RunTool("check --fix pack");
  const std::string fixed = ReadFile("files/a.tmfx");
  EXPECT_NE(fixed, kWrong);
  EXPECT_TRUE(fs::is_symlink("pack/a.tmfx"));
  EXPECT_EQ(fs::status("files/a.tmfx").permissions(), fs::perms(0640));
  fs::remove("pack/a.tmfx");
  Write("pack/a.tmfx", kWrong);
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

}  // namespace
}  // namespace tarnmf::test
