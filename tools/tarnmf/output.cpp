// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/output.h"

#include <cerrno>
#include <cstdio>

#include "tools/tarnmf/standard_streams.h"
#include "tools/tarnmf/tell.h"

namespace tool {
namespace {

bool errorsHaveArrived = true;

}  // namespace

void WriteError(std::string_view text) {
  const std::size_t written = std::fwrite(text.data(), 1, text.size(), stderr);
  if (written != text.size() || std::fflush(stderr) != 0) errorsHaveArrived = false;
}

bool OutputHasArrived() {
  errno = 0;
  const bool hasArrived = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
  if (!hasArrived && !ReaderIsGone()) Tell("the output cannot be written");
  return hasArrived && errorsHaveArrived;
}

}  // namespace tool
