// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/arguments.h"

#include <windows.h>
#include <memory>
#include <shellapi.h>

#include "platform/filesystem.h"

namespace tool {

// Those of main have lost every character that the code page of the system lacks.
std::vector<std::string> Arguments(int count, const char* const* arguments) {
  const std::unique_ptr<wchar_t*, HLOCAL (*)(HLOCAL)> wide(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  if (wide == nullptr) return {arguments, arguments + count};
  std::vector<std::string> narrow;
  for (int i = 0; i < count; ++i)
    narrow.emplace_back(btkFSPath(wide.get()[i]).NarrowText());
  return narrow;
}

}  // namespace tool
