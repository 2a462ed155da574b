#include "tools/tarnmf/other_programs.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

#if defined(_WIN32)
#include <process.h>
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tool {
namespace {

std::vector<const char*> ArgumentsOf(const std::vector<std::string>& command) {
  std::vector<const char*> arguments;
  for (const std::string& argument : command)
    arguments.push_back(argument.c_str());
  arguments.push_back(nullptr);
  return arguments;
}

}  // namespace

ScratchDirectory::ScratchDirectory() {
  const std::filesystem::path base = std::filesystem::temp_directory_path();
  for (int number = 0; number < 1000; ++number) {
    path_ = base / ("tarnmf-" + std::to_string(std::rand()));
    if (std::filesystem::create_directory(path_)) return;
  }
  throw std::runtime_error("no temporary directory can be made in " + base.string());
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

bool RunProgram(const std::vector<std::string>& command) {
  const std::vector<const char*> arguments = ArgumentsOf(command);
  std::fflush(nullptr);
#if defined(_WIN32)
  return _spawnvp(_P_WAIT, arguments[0], arguments.data()) == 0;
#else
  pid_t child = 0;
  if (posix_spawnp(&child, arguments[0], nullptr, nullptr,
                   const_cast<char* const*>(arguments.data()), environ) != 0) {
    return false;
  }
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
#endif
}

}  // namespace tool
