#include "tools/tarnmf/directory.h"

#include <filesystem>
#include <system_error>

namespace tool {

std::string DirectoryProblem(const std::string& path) {
  std::error_code error;
  const std::filesystem::directory_iterator probe(path, error);
  if (!error) return "";
  if (error == std::errc::no_such_file_or_directory) return "there is no such directory";
  if (error == std::errc::not_a_directory) return "this is no directory";
  return "it cannot be read: " + error.message();
}

std::string Absolute(const std::string& path) {
  return path.empty() ? path : std::filesystem::absolute(path).lexically_normal().string();
}

}  // namespace tool
