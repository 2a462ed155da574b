#include "tools/tarnmf/other_programs.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "tools/tarnmf/output.h"

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

  // Out of memory leaves the stream as it is.
  void Redirect(int stream, int to) {
    (void)posix_spawn_file_actions_adddup2(&actions_, to, stream);
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

bool Run(const std::vector<std::string>& command, const FileActions& actions) {
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

}  // namespace

ScratchDirectory::ScratchDirectory() {
  std::string path = (std::filesystem::temp_directory_path() / "tarnmf-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr)
    throw std::system_error(errno, std::generic_category(), path);
  path_ = path;
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

bool RunProgram(const std::vector<std::string>& command) {
  return Run(command, FileActions());
}

bool RunQuietly(const std::vector<std::string>& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> messages(std::tmpfile(), std::fclose);
  if (messages == nullptr) return RunProgram(command);
  FileActions actions;
  actions.Redirect(STDOUT_FILENO, fileno(messages.get()));
  actions.Redirect(STDERR_FILENO, fileno(messages.get()));
  if (Run(command, actions)) return true;
  std::rewind(messages.get());
  std::array<char, 4096> block;
  while (const std::size_t bytes = std::fread(block.data(), 1, block.size(), messages.get()))
    WriteError({block.data(), bytes});
  return false;
}

}  // namespace tool
