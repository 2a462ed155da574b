#include "platform/host/file_status.h"

#if defined(_WIN32)

#include <filesystem>
#include <system_error>

bool IsRegularFile(const char* path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error);
}

// A directory cannot be opened as a file.
bool IsDirectory(std::FILE*) {
  return false;
}

#else

#include <sys/stat.h>

bool IsRegularFile(const char* path) {
  struct stat status {};
  return stat(path, &status) == 0 && S_ISREG(status.st_mode);
}

bool IsDirectory(std::FILE* file) {
  struct stat status {};
  return fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode);
}

#endif
