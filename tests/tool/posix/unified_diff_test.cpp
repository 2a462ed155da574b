// SPDX-License-Identifier: Apache-2.0
// Patches as other programs take them.
#include "tools/tarnmf/unified_diff.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tool {
namespace {

using tarnmf::test::RunCommand;

TEST(UnifiedDiff, NamesAnyPath) {
  const tarnmf::test::TempDirectory directory;
  for (const std::string path :
       {"a b/c d", "q\"u", "back\\slash", "line\nfeed", "\xc3\xa9\t\x7f#"}) {
    directory.Write(path, "x\n");
    directory.Write("patch", UnifiedDiff(path, "x\n", "y\n"));
    const std::string change = "cd " + directory.At() + " && ";
    EXPECT_EQ(RunCommand(change + "git apply -p0 patch").status, 0) << path;
    EXPECT_EQ(tarnmf::test::ReadFile(directory.Path() / path), "y\n");
    if (RunCommand("command -v patch").status != 0) continue;
    EXPECT_EQ(RunCommand(change + "patch -p0 -R <patch").status, 0) << path;
    EXPECT_EQ(tarnmf::test::ReadFile(directory.Path() / path), "x\n");
  }
}

// Random texts of few different lines, so that many stand twice and move.
TEST(UnifiedDiff, IsAppliedByOtherPrograms) {
  std::mt19937 random(7);
  const auto below = [&](unsigned bound) { return static_cast<unsigned>(random() % bound); };
  const tarnmf::test::TempDirectory directory;
  const std::string apply =
      "cd " + directory.At() + " && git apply -p0 " + "--whitespace=nowarn --unidiff-zero patch";
  for (int round = 0; round < 60; ++round) {
    std::string texts[2];
    const unsigned kinds = 2 + below(30);
    for (unsigned line = 0; line < 40; ++line) {
      const std::string shared = std::to_string(below(kinds)) + (below(9) == 0 ? "\r\n" : "\n");
      for (std::string& text : texts)
        text += below(4) == 0 ? std::to_string(below(kinds)) + "\n" : shared;
    }
    if (below(2) == 0) texts[below(2)].pop_back();
    directory.Write("file", texts[0]);
    directory.Write("patch", UnifiedDiff("file", texts[0], texts[1]));
    const tarnmf::test::Outcome outcome = RunCommand(apply);
    ASSERT_EQ(outcome.status, 0) << outcome.errors << texts[0] << "\n->\n" << texts[1];
    ASSERT_EQ(tarnmf::test::ReadFile(directory.Path() / "file"), texts[1]);
  }
}

}  // namespace
}  // namespace tool
