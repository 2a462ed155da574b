// SPDX-License-Identifier: Apache-2.0
/// @file
/// Memory and owned strings. There are three kinds of blocks: arrays, strings, and tables that live
/// as long as the process. Each is released with the function of its kind, never with another one
/// or with the C library's free. Safe to call from several threads.
///
/// A resize of null allocates. It returns the new block, whose first bytes are those of the old
/// one, or null when out of memory; the old block then stays as it was. `bytes` must be greater
/// than 0.
#ifndef PLATFORM_MEMORY_H
#define PLATFORM_MEMORY_H

#include "platform/types.h"

/// Resizes an array.
BTK_API void* btkReAlloc(void* block, std::size_t bytes);
BTK_API void btkFree(void* block);  ///< releases an array; null is accepted

/// Resizes a table that lives as long as the process.
BTK_API void* btkSysReAlloc(void* block, std::size_t bytes);
BTK_API void btkSysFree(void* block);  ///< releases such a table; null is accepted

/// Resizes a string, narrow or wide.
BTK_API void* btkStrReAlloc(void* text, std::size_t bytes);
BTK_API void btkStrFree(void* text);  ///< releases a string; null is accepted

/// A copy of a string, released with btkStrFree. Null when `text` is null or when out of memory.
BTK_API char* btk_strdup(const char* text);
/// The same for a wide string.
BTK_API btkWChar* btk_wcsdup(const btkWChar* text);

#endif  // PLATFORM_MEMORY_H
