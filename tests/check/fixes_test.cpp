#include "check/fixes.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/support/temp_directory.h"

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

// What is under an unknown element comes to light with its name. The other file is fixed all the
// same.
TEST(Fixes, PutBackWhatWouldHaveMoreErrors) {
  const test::TempDirectory directory;
  directory.Write("pack/a.tmfx",
                  "<tarnmanifest version=\"1\"><runnabels><runnable x=\"\" y=\"\"/>"
                  "</runnabels><module id=\"m\" private=\"1\" name=\"n\"/></tarnmanifest>");
  directory.Write("pack/b.tmfx", "<tarnmanifest version=\"1.0\"/>");
  DiskFiles files;
  SettingsFinder settings(files);
  const std::string pack = directory.At("pack");
  const FixOutcome outcome = Fix({"", {pack}}, files, settings, Levels());
  EXPECT_EQ(outcome.putBack, std::vector{pack + "/a.tmfx"});
  ASSERT_EQ(outcome.files.size(), 1U);
  EXPECT_EQ(outcome.files[0].path, pack + "/b.tmfx");
  EXPECT_EQ(outcome.files[0].after, "<tarnmanifest version=\"1\"/>");
}

// With the module's element known, the reference in the other file is judged. That file is fixed all
// the same, and nothing is left for a second run.
TEST(Fixes, KeepWhatIsNotToBlameForMoreErrors) {
  const test::TempDirectory directory;
  directory.Write("pack/a.tmfx",
                  "<tarnmanifest version=\"1\"><modul id=\"m\" name=\"n\"/></tarnmanifest>");
  directory.Write("pack/b.tmfx",
                  "<tarnmanifest version=\"1.0\"><class id=\"2c9d0b1e6f3547a48a105be2f0c40001\">"
                  "<clientside moduleref=\"gone\"/></class></tarnmanifest>");
  DiskFiles files;
  SettingsFinder settings(files);
  const std::string pack = directory.At("pack");
  const FixOutcome outcome = Fix({"", {pack}}, files, settings, Levels());
  EXPECT_TRUE(outcome.putBack.empty());
  ASSERT_EQ(outcome.files.size(), 2U);
  EXPECT_EQ(outcome.files[1].after.substr(0, 26), "<tarnmanifest version=\"1\">");
}

}  // namespace
}  // namespace tarnmf::check
