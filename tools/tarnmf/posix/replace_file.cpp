// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/replace_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "platform/host/system_path.h"

namespace tool {
namespace {

[[noreturn]] void Fail(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), path);
}

// A file beside another one, which is removed again unless it takes that one's place.
class NewFile {
 public:
  explicit NewFile(const std::string& path) : target_(path), name_(path + ".XXXXXX") {
    descriptor_ = mkstemp(name_.data());
    if (descriptor_ < 0) Fail(name_);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    close(descriptor_);
    if (!name_.empty()) unlink(name_.c_str());
  }

  void TakeMode() {
    struct stat old {};
    if (stat(target_.c_str(), &old) != 0) Fail(target_);
    // Only root may give files away; a mode with the set-id bits is lost by it, so it comes first.
    if (fchown(descriptor_, old.st_uid, old.st_gid) != 0 && errno != EPERM) Fail(name_);
    if (fchmod(descriptor_, old.st_mode & 07777U) != 0) Fail(name_);
  }

  void Write(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) Fail(name_);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    if (fsync(descriptor_) != 0) Fail(name_);
  }

  void TakePlace() {
    if (std::rename(name_.c_str(), target_.c_str()) != 0) Fail(target_);
    name_.clear();
  }

 private:
  const std::string target_;
  std::string name_;
  int descriptor_ = -1;
};

}  // namespace

void ReplaceContents(const std::string& path, const std::string& bytes) {
  NewFile file(NarrowPath(std::filesystem::canonical(SystemPath(path))));
  file.TakeMode();
  file.Write(bytes);
  file.TakePlace();
}

}  // namespace tool
