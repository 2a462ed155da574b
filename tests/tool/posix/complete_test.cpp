// SPDX-License-Identifier: Apache-2.0
// Completion of lines that are wrong: the person who writes one is told nothing.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

TEST(Complete, SaysNothingOfWhatIsWrong) {
  const TempDirectory directory;
  directory.Write("pack/a.tmfx",
                  "<tarnclassmanifest version='1'><class commonname='Seen\"'/><class");
  directory.Write("pack/b.tmfx", "\xff\xfe<");
  directory.Write("pack/c.tmfx", "<class commonname='\xc2\x9bIn\xc2\x9b'/>");
  directory.Write("pack/.installed", "base");
  ASSERT_EQ(mkfifo(directory.At("pack/d.tmfx").c_str(), 0600), 0);
  ASSERT_EQ(mkfifo(directory.At("pipe").c_str(), 0600), 0);
  struct Row {
    const char* words;
    const char* out;
  };
  for (const Row& row : {Row{"find class --add pack S", "Seen\"\t\n"},
                         {"find class --add pack --add pack --loadpoint pack ''", "Seen\"\t\n"},
                         {"find class --add pipe --add pack/a.tmfx --add '' --add nowhere ''", ""},
                         {"find class --add ''", "\tdirectories\n"},
                         {"find class --bogus --scope=--=--add --add pack S", "Seen\"\t\n"},
                         {"find class --add pack S too many", "\tfiles\n"},
                         {"find -- class", ""},
                         {"--=", ""},
                         {"-",
                          "--help\tPrint this help message and exit\n"
                          "--json\tprint the version as JSON\n"
                          "--version\tDisplay program version information and exit\n"},
                         {"= '[' '' - -- -- '{}' \"$(printf '\\377')\"", ""},
                         {"explain /", ""},
                         {"explain CLASS/I", ""},
                         {"check --rule bogus=", ""}}) {
    const Outcome outcome = RunCommand("cd " + directory.At() +
                                       " && timeout 60 " TARNMF_TOOL " complete -- " + row.words);
    EXPECT_EQ(outcome.status, 0) << row.words;
    EXPECT_EQ(outcome.errors, "") << row.words;
    EXPECT_EQ(outcome.out, row.out) << row.words;
  }
}

}  // namespace
}  // namespace tarnmf::test
