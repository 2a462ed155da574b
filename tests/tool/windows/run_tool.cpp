// SPDX-License-Identifier: Apache-2.0
#include "tests/tool/run_tool.h"

#include <windows.h>

#include "platform/host/system_path.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

HANDLE OpenInherited(const std::string& file, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileW(SystemPath(file).c_str(), access, FILE_SHARE_READ, &inherited, disposition,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

Outcome RunTool(const std::string& arguments, const std::string& input) {
  const TempDirectory scratch;
  const std::string out = scratch.At("out");
  const std::string errors = scratch.At("errors");
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = OpenInherited(scratch.Write("in", input), GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = OpenInherited(out, GENERIC_WRITE, CREATE_ALWAYS);
  start.hStdError = OpenInherited(errors, GENERIC_WRITE, CREATE_ALWAYS);
  std::wstring line = SystemPath(TARNMF_TOOL " " + arguments);
  PROCESS_INFORMATION process = {};
  DWORD status = static_cast<DWORD>(-1);
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &process) != 0) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  for (const HANDLE stream : {start.hStdInput, start.hStdOutput, start.hStdError})
    CloseHandle(stream);
  return {static_cast<int>(status), ReadFile(out), ReadFile(errors)};
}

}  // namespace tarnmf::test
