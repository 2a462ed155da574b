// SPDX-License-Identifier: Apache-2.0
#include "platform/host/file_status.h"

#include <sys/stat.h>

bool IsRegularFile(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}
