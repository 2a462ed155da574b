// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/standard_streams.h"

#include <windows.h>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <initializer_list>
#include <io.h>

namespace tool {
namespace {

// The console has its own code page back when the program ends.
class Utf8Console {
 public:
  Utf8Console() : before_(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }
  Utf8Console(const Utf8Console&) = delete;
  Utf8Console& operator=(const Utf8Console&) = delete;
  ~Utf8Console() { SetConsoleOutputCP(before_); }

 private:
  UINT before_;
};

}  // namespace

// The number of a closed stream is nobody else's here.
void PrepareStreams() {
  static const Utf8Console console;
  for (FILE* const stream : {stdin, stdout, stderr}) {
    if (_fileno(stream) >= 0) _setmode(_fileno(stream), _O_BINARY);
  }
}

// The C library's own number is that of a wrong argument.
bool ReaderIsGone() {
  const unsigned long reason = _doserrno;
  return reason == ERROR_NO_DATA || reason == ERROR_BROKEN_PIPE ||
         reason == ERROR_PIPE_NOT_CONNECTED;
}

bool TerminalShowsColors() {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(output, &mode) != 0 &&
         SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

}  // namespace tool
