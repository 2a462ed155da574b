// SPDX-License-Identifier: Apache-2.0
#include "platform/host/input_file.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

int OpenInputFile(const char* path, bool withSpecial) {
  // A pipe that nobody writes to would be waited for here already.
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC | (withSpecial ? 0 : O_NONBLOCK));
  if (descriptor == -1) return -1;
  struct stat status {};
  const bool isKnown = fstat(descriptor, &status) == 0;
  const bool isFit = withSpecial ? !S_ISDIR(status.st_mode) : S_ISREG(status.st_mode);
  if (isKnown && isFit) return descriptor;
  close(descriptor);
  return -1;
}

std::ptrdiff_t ReadInputFile(int descriptor, void* buffer, std::size_t size) {
  std::ptrdiff_t bytes = 0;
  do
    bytes = read(descriptor, buffer, size);
  while (bytes == -1 && errno == EINTR);
  return bytes;
}

void CloseInputFile(int descriptor) {
  close(descriptor);
}
