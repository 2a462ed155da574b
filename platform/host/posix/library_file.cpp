// SPDX-License-Identifier: Apache-2.0
#include "platform/host/library_file.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

// The header of the library that this code is in, which the linker puts in front of it. A library
// for this machine agrees with it.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the linker has chosen the name.
extern const ElfW(Ehdr) __ehdr_start __attribute__((visibility("hidden")));

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

std::string SystemError(int number) {
  return std::generic_category().message(number);
}

class OpenFile {
 public:
  // Does not wait for the other end of a pipe.
  explicit OpenFile(const char* path)
      : descriptor_(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  int Descriptor() const { return descriptor_; }

  bool Read(void* to, std::uint64_t size, std::uint64_t offset) const {
    return pread(descriptor_, to, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
  }

 private:
  int descriptor_;
};

std::string HeaderProblem(const Header& header) {
  if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0) return "it is no library";
  const Header& own = __ehdr_start;
  for (const int field : {EI_CLASS, EI_DATA, EI_VERSION}) {
    if (header.e_ident[field] != own.e_ident[field]) return "it is for another kind of machine";
  }
  if (header.e_machine != own.e_machine) return "it is for another kind of machine";
  if (header.e_type != ET_DYN) return "it is no shared library";
  if (header.e_version != own.e_version || header.e_phentsize != sizeof(Segment))
    return "its header is damaged";
  return "";
}

// What the loader reads of the file: sections are none of it.
std::string SegmentProblem(const std::vector<Segment>& segments, std::uint64_t size) {
  bool isLoaded = false;
  for (const Segment& segment : segments) {
    if (segment.p_type == PT_NULL) continue;
    isLoaded = isLoaded || segment.p_type == PT_LOAD;
    if (segment.p_offset > size || segment.p_filesz > size - segment.p_offset)
      return "it is cut off: a segment reaches beyond its " + std::to_string(size) + " bytes";
  }
  return isLoaded ? "" : "it has nothing to load";
}

// Why the file is not a whole shared library for this machine, in words; empty when it is one. The
// loader maps what the headers of a file promise and dies where the file ends before that.
std::string LibraryProblem(const char* path) {
  const OpenFile file(path);
  if (file.Descriptor() < 0) return SystemError(errno);
  struct stat status {};
  if (fstat(file.Descriptor(), &status) != 0) return SystemError(errno);
  if (!S_ISREG(status.st_mode)) return "it is no file";
  const auto size = static_cast<std::uint64_t>(status.st_size);

  Header header;
  if (!file.Read(&header, sizeof header, 0)) return "it is too short for a library";
  if (std::string problem = HeaderProblem(header); !problem.empty()) return problem;
  std::vector<Segment> segments(header.e_phnum);
  if (!file.Read(segments.data(), segments.size() * sizeof(Segment), header.e_phoff))
    return "it is cut off: its program headers are not all there";
  return SegmentProblem(segments, size);
}

}  // namespace

void* LoadLibraryFile(const char* path, std::string& failure) {
  failure = LibraryProblem(path);
  if (!failure.empty()) return nullptr;
  void* const loaded = dlopen(path, RTLD_NOW | RTLD_LOCAL);
  if (loaded == nullptr) failure = dlerror();
  return loaded;
}
