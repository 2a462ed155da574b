// SPDX-License-Identifier: Apache-2.0
// What kind of file there is, asked while it is opened or before.
#ifndef PLATFORM_HOST_FILE_STATUS_H
#define PLATFORM_HOST_FILE_STATUS_H

#include <cstdio>

// False for a file that is not there.
bool IsRegularFile(const char* path);

// For reading, without a buffer. Null for a directory, for what cannot be opened and, unless special
// files are meant as well, for pipes and devices: those are not even waited for.
std::FILE* OpenForReading(const char* path, bool withSpecial);

#endif  // PLATFORM_HOST_FILE_STATUS_H
