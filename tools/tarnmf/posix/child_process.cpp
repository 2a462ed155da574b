// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/child_process.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tool {
namespace {

std::vector<const char*> ArgumentsOf(const std::vector<std::string>& command) {
  std::vector<const char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command)
    arguments.push_back(argument.c_str());
  arguments.push_back(nullptr);
  return arguments;
}

// What a child process does before it becomes the program.
class FileActions {
 public:
  FileActions() { posix_spawn_file_actions_init(&actions_); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;
  ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

  // Out of memory leaves the streams as they are.
  void Redirect(const char* file) {
    constexpr mode_t kOwner = 0600;
    (void)posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, file,
                                           O_WRONLY | O_CREAT | O_TRUNC, kOwner);
    (void)posix_spawn_file_actions_adddup2(&actions_, STDOUT_FILENO, STDERR_FILENO);
  }
  const posix_spawn_file_actions_t* Get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_;
};

// It ends as usual when nobody reads what it writes, other than this process.
class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&attributes_);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes_, &signals);
    posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGDEF);
  }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;
  ~Attributes() { posix_spawnattr_destroy(&attributes_); }

  const posix_spawnattr_t* Get() const { return &attributes_; }

 private:
  posix_spawnattr_t attributes_;
};

}  // namespace

bool RunProcess(const std::vector<std::string>& command, const std::filesystem::path& output) {
  FileActions actions;
  if (!output.empty()) actions.Redirect(output.c_str());
  const std::vector<const char*> arguments = ArgumentsOf(command);
  const Attributes attributes;
  std::fflush(nullptr);
  pid_t child = 0;
  if (posix_spawnp(&child, arguments[0], actions.Get(), attributes.Get(),
                   const_cast<char* const*>(arguments.data()), environ) != 0) {
    return false;
  }
  int status = 0;
  return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace tool
