// What the dynamic loader can be given without harm.
#ifndef PLATFORM_HOST_LIBRARY_FILE_H
#define PLATFORM_HOST_LIBRARY_FILE_H

#include <string>

// Why the file is not a whole shared library for this machine, in words; empty when it is one. The
// loader maps what the headers of a file promise and dies where the file ends before that.
std::string LibraryProblem(const char* path);

#endif  // PLATFORM_HOST_LIBRARY_FILE_H
