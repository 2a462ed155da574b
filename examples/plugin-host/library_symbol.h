// SPDX-License-Identifier: Apache-2.0
// Names exported by libraries that are in the process already.
#ifndef PLUGIN_HOST_LIBRARY_SYMBOL_H
#define PLUGIN_HOST_LIBRARY_SYMBOL_H

// The address of what the library at `path` exports as `name`; null when the library is not loaded or
// exports nothing of that name. Loads nothing.
void* LibrarySymbol(const char* path, const char* name);

#endif  // PLUGIN_HOST_LIBRARY_SYMBOL_H
