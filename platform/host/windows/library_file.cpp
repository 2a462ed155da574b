// SPDX-License-Identifier: Apache-2.0
#include "platform/host/library_file.h"

#include <windows.h>
#include <memory>

#include "platform/host/system_path.h"

namespace {

// In the words of the system.
std::string SystemError(DWORD code) {
  constexpr DWORD kHow = FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                         FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK;
  wchar_t* text = nullptr;
  FormatMessageW(kHow, nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
  const std::unique_ptr<wchar_t, HLOCAL (*)(HLOCAL)> owned(text, LocalFree);
  std::string narrow = btkFSPath(text).NarrowText();
  while (narrow.ends_with(' ') || narrow.ends_with('.'))
    narrow.pop_back();
  return narrow.empty() ? "error " + std::to_string(code) : narrow;
}

}  // namespace

// The loader looks for the libraries that this one needs beside it first, for which its path must have
// the system's own separators. What is no whole library is refused by the loader itself, without the
// window in which it would ask a person about it.
void* LoadLibraryFile(const char* path, std::string& failure) {
  DWORD shownBefore = 0;
  SetThreadErrorMode(SEM_FAILCRITICALERRORS, &shownBefore);
  void* const loaded = LoadLibraryExW(SystemPath(path).make_preferred().c_str(), nullptr,
                                      LOAD_WITH_ALTERED_SEARCH_PATH);
  if (loaded == nullptr) failure = SystemError(GetLastError());
  SetThreadErrorMode(shownBefore, nullptr);
  return loaded;
}
