// SPDX-License-Identifier: Apache-2.0
#include "check/fixes.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/check/example.h"
#include "tests/support/case_file.h"
#include "tests/support/documents.h"

namespace tarnmf::check {
namespace {

TEST(Fixes, EditTheBytesOfAFile) {
  const struct {
    std::string bytes;
    std::vector<Edit> edits;
    std::string edited;
  } rows[] = {
      {"abcdef", {{{4, 6}, "X"}, {{0, 1}, ""}, {{4, 4}, "i"}, {{1, 2}, "Y"}}, "YcdiX"},
      {"\xef\xbb\xbf"
       "ab",
       {{{0, 0}, "1"}, {{2, 2}, "2"}},
       "\xef\xbb\xbf"
       "1ab2"},
      {"a\r\nb\n", {{{0, 1}, "x\ny\r\n"}}, "x\r\ny\r\n\r\nb\n"},
      {"a\nb\r\n", {{{0, 1}, "x\n"}}, "x\n\nb\r\n"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Edited(Source::OfManifest("t", row.bytes), row.edits), row.edited);
}

TEST(Fixes, LeaveWhatTheCasesSay) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/fixes.cases")) {
    const test::Example example(test::WithIds(one.input + "\n"));
    DiskFiles files;
    SettingsFinder settings(files);
    const FixOutcome outcome = Fix(example.Request(), files, settings, Levels());
    std::string shown;
    for (const std::string& path : outcome.putBack)
      shown += "put back: " + path + "\n";
    for (const auto& file : outcome.files)
      shown += "== " + file.path + "\n" + file.after;
    EXPECT_EQ(shown.empty() ? "nothing\n" : shown, test::WithIds(one.result)) << one.name;
  }
}

}  // namespace
}  // namespace tarnmf::check
