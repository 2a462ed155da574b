// SPDX-License-Identifier: Apache-2.0
// What kind of file there is.
#ifndef PLATFORM_HOST_FILE_STATUS_H
#define PLATFORM_HOST_FILE_STATUS_H

// False for a file that is not there.
bool IsRegularFile(const char* path);

#endif  // PLATFORM_HOST_FILE_STATUS_H
