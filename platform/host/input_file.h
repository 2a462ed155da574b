// SPDX-License-Identifier: Apache-2.0
// A file that is read without a buffer, since who reads it has one. It is known by its descriptor.
#ifndef PLATFORM_HOST_INPUT_FILE_H
#define PLATFORM_HOST_INPUT_FILE_H

#include <cstddef>

// -1 for a directory, for what cannot be opened and, unless special files are meant as well, for
// pipes and devices: those are not even waited for.
int OpenInputFile(const char* path, bool withSpecial);

// How many bytes were read: 0 at the end, -1 when reading failed.
std::ptrdiff_t ReadInputFile(int descriptor, void* buffer, std::size_t size);

void CloseInputFile(int descriptor);

#endif  // PLATFORM_HOST_INPUT_FILE_H
