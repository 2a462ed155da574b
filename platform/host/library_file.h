// SPDX-License-Identifier: Apache-2.0
// How shared libraries get into the process.
#ifndef PLATFORM_HOST_LIBRARY_FILE_H
#define PLATFORM_HOST_LIBRARY_FILE_H

#include <string>

// Loads a library into the process; null when that fails: `failure` says why. Nothing is loaded of a
// file that ends before its headers say so, where the system's loader would die of it.
// REQUIRES: the path is absolute; the system would look for a bare name in places of its own.
void* LoadLibraryFile(const char* path, std::string& failure);

#endif  // PLATFORM_HOST_LIBRARY_FILE_H
