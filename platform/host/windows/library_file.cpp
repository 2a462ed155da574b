#include "platform/host/library_file.h"

#include <windows.h>
#include <system_error>

#include "platform/host/system_path.h"

// The loader looks for the libraries that this one needs beside it first, for which its path must have
// the system's own separators. What is no whole library is refused by the loader itself, without the
// window in which it would ask a person about it.
void* LoadLibraryFile(const char* path, std::string& failure) {
  DWORD shownBefore = 0;
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &shownBefore);
  void* const loaded = LoadLibraryExW(SystemPath(path).make_preferred().c_str(), nullptr,
                                      LOAD_WITH_ALTERED_SEARCH_PATH);
  if (loaded == nullptr) failure = std::system_category().message(static_cast<int>(GetLastError()));
  SetThreadErrorMode(shownBefore, nullptr);
  return loaded;
}
