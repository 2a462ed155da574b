// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/replace_file.h"

#include <windows.h>
#include <aclapi.h>
#include <algorithm>
#include <memory>
#include <string_view>
#include <system_error>

#include "platform/host/system_path.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// In the C library's words where it has some: the system's are not in UTF-8.
[[noreturn]] void Fail(const std::filesystem::path& path, DWORD error = GetLastError()) {
  const std::error_condition cause =
      std::system_category().default_error_condition(static_cast<int>(error));
  throw std::system_error(cause.value(), cause.category(), NarrowPath(path));
}

class OpenFile {
 public:
  OpenFile(const std::filesystem::path& path, DWORD access, DWORD disposition)
      : handle_(CreateFileW(path.c_str(), access, kShared, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) Fail(path);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() { CloseHandle(handle_); }

  HANDLE Get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Where a link leads in the end.
std::filesystem::path Target(const std::filesystem::path& path) {
  const OpenFile file(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
  std::wstring target(32768, L'\0');  // the longest that there is
  const DWORD length =
      GetFinalPathNameByHandleW(file.Get(), target.data(), static_cast<DWORD>(target.size()), 0);
  if (length == 0 || length >= target.size()) Fail(path);
  target.resize(length);
  return target;
}

std::filesystem::path RandomName(std::filesystem::path beside) {
  UniIdT id = {};
  if (btkUniIdGen14(&id, kBtkUniIdRandom, 0) != kBtkOk) throw std::bad_alloc();
  return beside += "." + IdText(id);
}

// A file beside another one, which is removed again unless it takes that one's place.
class NewFile {
 public:
  explicit NewFile(std::filesystem::path target)
      : target_(std::move(target)), path_(RandomName(target_)) {
    const OpenFile created(path_, GENERIC_WRITE, CREATE_NEW);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (!path_.empty()) DeleteFileW(path_.c_str());
  }

  void Write(std::string_view bytes) {
    const OpenFile file(path_, GENERIC_WRITE, OPEN_EXISTING);
    while (!bytes.empty()) {
      constexpr std::size_t kMost = std::size_t{1} << 20U;
      DWORD written = 0;
      if (WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kMost)),
                    &written, nullptr) == 0) {
        Fail(path_);
      }
      bytes.remove_prefix(written);
    }
    if (FlushFileBuffers(file.Get()) == 0) Fail(path_);
  }

  // The access rights that the old file inherits from the folder, the new one has already.
  void TakeAccess() {
    PACL list = nullptr;
    PSECURITY_DESCRIPTOR found = nullptr;
    DWORD error = GetNamedSecurityInfoW(target_.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                        nullptr, nullptr, &list, nullptr, &found);
    if (error != ERROR_SUCCESS) Fail(target_, error);
    const std::unique_ptr<void, HLOCAL (*)(HLOCAL)> descriptor(found, LocalFree);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (GetSecurityDescriptorControl(found, &control, &revision) == 0) Fail(target_);
    const DWORD inheritance = (control & SE_DACL_PROTECTED) != 0
                                  ? PROTECTED_DACL_SECURITY_INFORMATION
                                  : UNPROTECTED_DACL_SECURITY_INFORMATION;
    std::wstring path = path_.native();
    error =
        SetNamedSecurityInfoW(path.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance,
                              nullptr, nullptr, list, nullptr);
    if (error != ERROR_SUCCESS) Fail(path_, error);
  }

  void TakeAttributes() {
    const DWORD attributes = GetFileAttributesW(target_.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) Fail(target_);
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) Fail(target_, ERROR_ACCESS_DENIED);
    if (SetFileAttributesW(path_.c_str(), attributes) == 0) Fail(path_);
  }

  // In one step, unlike ReplaceFile, which keeps more of the old file but leaves none of its name for a
  // moment.
  void TakePlace() {
    constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    if (MoveFileExW(path_.c_str(), target_.c_str(), kHow) == 0) Fail(target_);
    path_.clear();
  }

 private:
  const std::filesystem::path target_;
  std::filesystem::path path_;
};

}  // namespace

void ReplaceContents(const std::string& path, const std::string& bytes) {
  NewFile file(Target(SystemPath(path)));
  file.TakeAccess();
  file.TakeAttributes();
  file.Write(bytes);
  file.TakePlace();
}

}  // namespace tool
