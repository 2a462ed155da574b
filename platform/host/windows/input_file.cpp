// SPDX-License-Identifier: Apache-2.0
#include "platform/host/input_file.h"

#include <fcntl.h>
#include <io.h>

#include "platform/host/file_status.h"
#include "platform/host/system_path.h"

// A directory cannot be opened as a file. Pipes have a folder of their own, which no load point is.
int OpenInputFile(const char* path, bool withSpecial) {
  if (!withSpecial && !IsRegularFile(path)) return -1;
  return _wopen(SystemPath(path).c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT);
}

std::ptrdiff_t ReadInputFile(int descriptor, void* buffer, std::size_t size) {
  return _read(descriptor, buffer, static_cast<unsigned>(size));
}

void CloseInputFile(int descriptor) {
  _close(descriptor);
}
