#include "tools/tarnmf/output.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

#include "tools/tarnmf/tell.h"

namespace tool {
namespace {

bool errorsHaveArrived = true;

// The standard streams are the first three descriptors, and a new one is the least that is free.
bool IsOpenOrBlocked(int stream) {
  if (fcntl(stream, F_GETFD) != -1) return true;
  return open("/dev/null", O_RDONLY) == stream;
}

}  // namespace

void PrepareStreams() {
  std::signal(SIGPIPE, SIG_IGN);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (!IsOpenOrBlocked(stream)) return;
  }
}

void WriteError(std::string_view text) {
  const std::size_t written = std::fwrite(text.data(), 1, text.size(), stderr);
  if (written != text.size() || std::fflush(stderr) != 0) errorsHaveArrived = false;
}

bool OutputHasArrived() {
  errno = 0;
  const bool hasArrived = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
  if (!hasArrived && errno != EPIPE) Tell("the output cannot be written");
  return hasArrived && errorsHaveArrived;
}

}  // namespace tool
