// What kind of file there is.
#ifndef PLATFORM_HOST_FILE_STATUS_H
#define PLATFORM_HOST_FILE_STATUS_H

#include <cstdio>

// False for a file that is not there. One question to the system each.
bool IsRegularFile(const char* path);
bool IsDirectory(std::FILE* file);

#endif  // PLATFORM_HOST_FILE_STATUS_H
