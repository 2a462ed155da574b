// SPDX-License-Identifier: Apache-2.0
#include "library_symbol.h"

#include <dlfcn.h>

void* LibrarySymbol(const char* path, const char* name) {
  void* const library = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
  if (library == nullptr) return nullptr;
  void* const symbol = dlsym(library, name);
  dlclose(library);  // whoever has loaded it keeps it
  return symbol;
}
