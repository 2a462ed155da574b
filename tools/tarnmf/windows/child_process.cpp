// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/child_process.h"

#include <windows.h>
#include <cstdio>
#include <cstdlib>

#include "platform/host/system_path.h"

namespace tool {
namespace {

// An argument as programs take it out of a command line again: a backslash is one of a kind only in
// front of a quotation mark.
std::wstring Quoted(const std::string& argument) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  const std::filesystem::path wide = SystemPath(argument);
  for (const wchar_t unit : wide.native()) {
    if (unit == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    quoted += unit;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

// Empty when there is none. The working directory is not looked into, as the system would do by itself:
// what lies beside somebody's manifests is not to be run.
std::wstring FoundInPath(const std::string& program) {
  const wchar_t* const folders = _wgetenv(L"PATH");
  if (folders == nullptr) return L"";
  std::wstring found(32768, L'\0');  // the longest that there is
  const DWORD length = SearchPathW(folders, SystemPath(program).c_str(), L".exe",
                                   static_cast<DWORD>(found.size()), found.data(), nullptr);
  found.resize(length < found.size() ? length : 0);
  return found;
}

class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (IsOpen()) CloseHandle(handle_);
  }

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

// A new file that the child process may write to as well.
HANDLE CreateShared(const std::filesystem::path& file) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool Succeeds(const Handle& process) {
  DWORD status = 1;
  return WaitForSingleObject(process.Get(), INFINITE) == WAIT_OBJECT_0 &&
         GetExitCodeProcess(process.Get(), &status) != 0 && status == 0;
}

}  // namespace

bool RunProcess(const std::vector<std::string>& command, const std::filesystem::path& output) {
  const std::wstring program = FoundInPath(command[0]);
  if (program.empty()) return false;
  std::wstring line;
  for (const std::string& argument : command)
    line += (line.empty() ? L"" : L" ") + Quoted(argument);
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  const Handle file(output.empty() ? INVALID_HANDLE_VALUE : CreateShared(output));
  if (file.IsOpen()) {
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = start.hStdError = file.Get();
  }
  std::fflush(nullptr);
  PROCESS_INFORMATION started = {};
  if (CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                     &start, &started) == 0) {
    return false;
  }
  const Handle thread(started.hThread);
  return Succeeds(Handle(started.hProcess));
}

}  // namespace tool
