// Memory and owned strings. Blocks and strings are released with the function named here, never
// with the C library's free. Safe to call from several threads.
#ifndef PLATFORM_MEMORY_H
#define PLATFORM_MEMORY_H

#include "platform/types.h"

// Resizes `block` (null: allocates) to `bytes`, which must be greater than 0. Returns the new
// block, whose first bytes are those of the old one, or null when memory cannot be had; the old
// block then stays as it was.
BTK_API void* btkReAlloc(void* block, std::size_t bytes);

// Releases a block of btkReAlloc. Null is accepted.
BTK_API void btkFree(void* block);

// The same pair for tables that live as long as the process.
BTK_API void* btkSysReAlloc(void* block, std::size_t bytes);
BTK_API void btkSysFree(void* block);

// Owned copies of a NUL-terminated string. Null when `text` is null or memory cannot be had.
// Released with btkStrFree.
BTK_API char* btk_strdup(const char* text);
BTK_API btkWChar* btk_wcsdup(const btkWChar* text);

// Releases an owned string, narrow or wide. Null is accepted.
BTK_API void btkStrFree(void* text);

#endif  // PLATFORM_MEMORY_H
