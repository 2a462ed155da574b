// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/directory.h"

#include <filesystem>
#include <system_error>

#include "check/paths.h"
#include "platform/host/system_path.h"

namespace tool {

std::string DirectoryProblem(const std::string& path) {
  std::error_code error;
  const std::filesystem::directory_iterator probe(SystemPath(path), error);
  if (!error) return "";
  if (error == std::errc::no_such_file_or_directory) return "there is no such directory";
  if (error == std::errc::not_a_directory) return "this is no directory";
  return "it cannot be read: " + error.message();
}

std::string Absolute(const std::string& path) {
  return path.empty() ? path : tarnmf::check::AbsolutePath(path);
}

}  // namespace tool
