// SPDX-License-Identifier: Apache-2.0
// The command "check" in a directory of its own.
#ifndef TESTS_TOOL_CHECK_COMMAND_H
#define TESTS_TOOL_CHECK_COMMAND_H

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/temp_directory.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {

// A fresh directory in which the tool runs, so that paths are short and always the same.
class CheckCommand : public testing::Test {
 protected:
  CheckCommand() { std::filesystem::current_path(directory_.Path()); }
  ~CheckCommand() override { std::filesystem::current_path(home_); }

  void Write(const std::string& path, const std::string& text) { directory_.Write(path, text); }

 private:
  const std::filesystem::path home_ = std::filesystem::current_path();
  const TempDirectory directory_;
};

inline constexpr char kGood[] = "<tarnmanifest version=\"1\"/>\n";
inline constexpr char kWarned[] =
    "<tarnmanifest version=\"1\">\n"
    "  <runnable moduleref=\"gone\"/>\n"
    "</tarnmanifest>\n";
inline constexpr char kWrong[] =
    "<tarnmanifest version=\"1\">\n"
    "\t<module id=\"\xc3\xa9\" nmae=\"b\" private=\"1\"/>\n"
    "  <module id=\"\xc3\xa9\" name=\"c\"/>\n"
    "</tarnmanifest>\n";

}  // namespace tarnmf::test

#endif  // TESTS_TOOL_CHECK_COMMAND_H
