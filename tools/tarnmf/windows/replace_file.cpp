#include "tools/tarnmf/replace_file.h"

#include <windows.h>
#include <algorithm>
#include <string_view>
#include <system_error>

#include "platform/host/system_path.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

[[noreturn]] void Fail(const std::filesystem::path& path) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                          NarrowPath(path));
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
      : target_(std::move(target)), path_(RandomName(target_)) {}
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    if (!path_.empty()) DeleteFileW(path_.c_str());
  }

  void Write(std::string_view bytes) {
    const OpenFile file(path_, GENERIC_WRITE, CREATE_NEW);
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

  // With the old one's attributes and access rights.
  void TakePlace() {
    if (ReplaceFileW(target_.c_str(), path_.c_str(), nullptr, 0, nullptr, nullptr) == 0)
      Fail(target_);
    path_.clear();
  }

 private:
  const std::filesystem::path target_;
  std::filesystem::path path_;
};

}  // namespace

void ReplaceFile(const std::string& path, const std::string& bytes) {
  NewFile file(Target(SystemPath(path)));
  file.Write(bytes);
  file.TakePlace();
}

}  // namespace tool
