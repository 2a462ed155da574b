// SPDX-License-Identifier: Apache-2.0
#include "check/settings.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/case_file.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::check {
namespace {

TEST(Settings, AreReadLineByLine) {
  const Settings settings = ParseSettings(
      "some/.tarnmf-check",
      "\xef\xbb\xbf# All.\r\n  class-hidden=off # for now\r\nbackslash = error\nbackslash = info\n"
      "loadpoint = ../platform/  \n\nbad-id = error");
  EXPECT_EQ(settings.faults, std::vector<std::string>());
  EXPECT_EQ(settings.levels.Of(Rule::kClassHidden), Severity::kOff);
  EXPECT_EQ(settings.levels.Of(Rule::kBackslash), Severity::kInfo);
  EXPECT_EQ(settings.levels.Of(Rule::kFileMissing), std::nullopt);
  EXPECT_EQ(std::filesystem::path(settings.loadpoint), "platform/");

  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/settings.cases"))
    EXPECT_EQ(ParseSettings("s", one.input).faults, std::vector{"s:" + one.result}) << one.name;
}

TEST(Settings, OfTheNearestFolderCount) {
  const test::TempDirectory directory;
  directory.Write(".tarnmf-check", "backslash = info\nloadpoint = own\n");
  directory.Write("own/a", "");
  directory.Write("near/.tarnmf-check", "class-hidden = off\n");
  directory.Write("near/pack/a", "");
  const std::filesystem::path home = std::filesystem::current_path();
  std::filesystem::current_path(directory.Path() / "near");
  DiskFiles files;
  SettingsFinder finder(files);
  const Settings* const near = finder.For("pack/");
  ASSERT_NE(near, nullptr);
  EXPECT_EQ(near->path, ".tarnmf-check");
  EXPECT_EQ(near->levels.Of(Rule::kBackslash), std::nullopt);
  EXPECT_EQ(finder.For("."), near);
  EXPECT_EQ(finder.For(directory.At("near/pack")), near);
  const Settings* const far = finder.For("../own");
  ASSERT_NE(far, nullptr);
  EXPECT_EQ(far->path, "../.tarnmf-check");
  EXPECT_EQ(far->loadpoint, "../own");
  EXPECT_EQ(finder.For("/"), nullptr);
  std::filesystem::current_path(home);
}

}  // namespace
}  // namespace tarnmf::check
