// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/run_tool.h"

#include <cstdio>
#include <sys/wait.h>

#include "tests/support/temp_directory.h"

namespace tarnmf::test {

Outcome RunCommand(const std::string& command) {
  const TempDirectory scratch;
  const std::string errors = scratch.At("errors");
  FILE* pipe = popen(("{ " + command + "; } 2>" + errors).c_str(), "r");
  std::string out;
  char block[4096];
  while (const std::size_t bytes = std::fread(block, 1, sizeof block, pipe))
    out.append(block, bytes);
  const int status = pclose(pipe);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out, ReadFile(errors)};
}

Outcome RunTool(const std::string& arguments, const std::string& input) {
  if (input.empty()) return RunCommand(TARNMF_TOOL " " + arguments);
  const TempDirectory scratch;
  return RunCommand(TARNMF_TOOL " " + arguments + " <" + scratch.Write("input", input));
}

}  // namespace tarnmf::test
