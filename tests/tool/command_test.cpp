// SPDX-License-Identifier: Apache-2.0
// What commands print for the files of a case.
#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "platform/host/system_names.h"
#include "tests/check/example.h"
#include "tests/support/case_file.h"
#include "tests/support/documents.h"
#include "tests/tool/run_tool.h"

namespace tarnmf::test {
namespace {

// "{exe}" is what programs end in.
Outcome RunLine(std::string arguments) {
  if (const std::size_t at = arguments.find("{exe}"); at != arguments.npos)
    arguments.replace(at, 5, kSystemNames.programSuffix);
  return RunTool(arguments);
}

TEST(Commands, PrintWhatTheCasesSay) {
  for (const FileCase& one : ReadCaseFile(TARNMF_CASES "/commands.cases")) {
    SCOPED_TRACE(one.name);
    const Example example(WithIds(one.input + "\n"));
    std::istringstream lines(WithIds(one.result));
    std::string rest;  // of what is printed
    for (std::string line; std::getline(lines, line);) {
      SCOPED_TRACE(line);
      if (line.starts_with("> ")) {
        const Outcome outcome = RunLine(line.substr(std::min<std::size_t>(4, line.size())));
        EXPECT_EQ(outcome.status, line[2] - '0') << outcome.errors;
        EXPECT_EQ(outcome.status == 2 ? outcome.out : "", "");  // told in words alone
        rest = outcome.out + outcome.errors;
      } else if (line.starts_with("- ")) {
        EXPECT_EQ(rest.find(line.substr(2)), rest.npos) << rest;
      } else {
        const std::size_t at = rest.find(line);
        EXPECT_NE(at, rest.npos) << rest;
        if (at != rest.npos) rest.erase(0, at + line.size());
      }
    }
  }
}

}  // namespace
}  // namespace tarnmf::test
