// SPDX-License-Identifier: Apache-2.0
// Runs the tool as its users do.
#ifndef TESTS_TOOL_RUN_TOOL_H
#define TESTS_TOOL_RUN_TOOL_H

#include <string>

namespace tarnmf::test {

struct Outcome {
  int status;
  std::string out;
  std::string errors;
};

// What a command line of a POSIX shell comes to. Only there.
Outcome RunCommand(const std::string& command);

// `arguments` is what follows the tool's name on a command line, in double quotes where it has blanks;
// `input` is what it finds on standard input.
Outcome RunTool(const std::string& arguments, const std::string& input = "");

}  // namespace tarnmf::test

#endif  // TESTS_TOOL_RUN_TOOL_H
