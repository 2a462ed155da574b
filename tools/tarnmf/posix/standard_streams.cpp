// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/standard_streams.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace tool {
namespace {

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

bool ReaderIsGone() {
  return errno == EPIPE;
}

bool TerminalShowsColors() {
  const char* const terminal = std::getenv("TERM");
  if (terminal == nullptr || std::string_view(terminal) == "dumb") return false;
  return isatty(STDOUT_FILENO) != 0;
}

}  // namespace tool
