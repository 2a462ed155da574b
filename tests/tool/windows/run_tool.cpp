#include "tests/tool/run_tool.h"

#include <windows.h>

#include "platform/host/system_path.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

HANDLE CreateInherited(const std::filesystem::path& file) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

Outcome RunTool(const std::string& arguments) {
  const TempDirectory scratch;
  const std::filesystem::path out = scratch.Path() / "out";
  const std::filesystem::path errors = scratch.Path() / "errors";
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  start.hStdOutput = CreateInherited(out);
  start.hStdError = CreateInherited(errors);
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
  CloseHandle(start.hStdOutput);
  CloseHandle(start.hStdError);
  return {static_cast<int>(status), ReadFile(out), ReadFile(errors)};
}

}  // namespace tarnmf::test
