// SPDX-License-Identifier: Apache-2.0
#include "platform/host/file_status.h"

#include <system_error>

#include "platform/host/system_path.h"

bool IsRegularFile(const char* path) {
  std::error_code error;
  return std::filesystem::is_regular_file(SystemPath(path), error);
}

// A directory cannot be opened as a file. Pipes have a folder of their own, which no load point is.
std::FILE* OpenForReading(const char* path, bool withSpecial) {
  if (!withSpecial && !IsRegularFile(path)) return nullptr;
  std::FILE* const file = _wfopen(SystemPath(path).c_str(), L"rbN");
  if (file != nullptr) std::setvbuf(file, nullptr, _IONBF, 0);
  return file;
}
