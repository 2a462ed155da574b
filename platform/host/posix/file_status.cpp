// SPDX-License-Identifier: Apache-2.0
#include "platform/host/file_status.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

bool IsRegularFile(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

std::FILE* OpenForReading(const char* path, bool withSpecial) {
  // A pipe that nobody writes to would be waited for here already.
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC | (withSpecial ? 0 : O_NONBLOCK));
  if (descriptor == -1) return nullptr;
  struct stat status {};
  const bool isKnown = fstat(descriptor, &status) == 0;
  const bool isFit = withSpecial ? !S_ISDIR(status.st_mode) : S_ISREG(status.st_mode);
  std::FILE* const file = isKnown && isFit ? fdopen(descriptor, "rb") : nullptr;
  if (file == nullptr) {
    close(descriptor);
  } else {
    std::setvbuf(file, nullptr, _IONBF, 0);
  }
  return file;
}
