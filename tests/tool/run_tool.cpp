// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/run_tool.h"

#include <fstream>
#include <sstream>

#include "platform/host/system_path.h"

namespace tarnmf::test {

std::string ReadFile(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

Outcome RunToolIn(const std::string& directory, const std::string& arguments) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(SystemPath(directory));
  Outcome outcome = RunTool(arguments);
  std::filesystem::current_path(before);
  return outcome;
}

}  // namespace tarnmf::test
