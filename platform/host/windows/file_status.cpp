// SPDX-License-Identifier: Apache-2.0
#include "platform/host/file_status.h"

#include <system_error>

#include "platform/host/system_path.h"

bool IsRegularFile(const char* path) {
  std::error_code error;
  return std::filesystem::is_regular_file(SystemPath(path), error);
}
