// SPDX-License-Identifier: Apache-2.0
#include "library_symbol.h"

#include <windows.h>
#include <algorithm>
#include <string>

#include "platform/filesystem.h"

void* LibrarySymbol(const char* path, const char* name) {
  std::wstring file = btkFSPath(path).WideText();
  std::replace(file.begin(), file.end(), L'/', L'\\');
  const HMODULE library = GetModuleHandleW(file.c_str());
  if (library == nullptr) return nullptr;
  return reinterpret_cast<void*>(GetProcAddress(library, name));
}
