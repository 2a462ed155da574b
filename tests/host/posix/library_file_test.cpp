// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <cstring>
#include <link.h>
#include <sys/stat.h>

#include "tests/host/preloading.h"

namespace tarnmf::test {
namespace {

TEST_F(Preloading, RefusesWhatIsNoLibraryOfThisMachine) {
  const auto withByte = [&](std::size_t offset, int byte) {
    std::string damaged = whole_;
    damaged.at(offset) = static_cast<char>(byte);
    return Load(damaged);
  };
  const std::string pipe = root_.At("pipe.so");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const struct {
    std::string reason, expected;
  } rows[] = {
      {Load(std::string(200, '#')), "it is no library"},
      {Load("\x7f"
            "ELF"),
       "it is too short for a library"},
      {withByte(EI_CLASS, ELFCLASSNONE), "it is for another kind of machine"},
      {withByte(EI_DATA, ELFDATANONE), "it is for another kind of machine"},
      {withByte(offsetof(ElfW(Ehdr), e_machine), 0xff), "it is for another kind of machine"},
      {withByte(offsetof(ElfW(Ehdr), e_type), ET_REL), "it is no shared library"},
      {withByte(offsetof(ElfW(Ehdr), e_phentsize), 1), "its header is damaged"},
      {withByte(offsetof(ElfW(Ehdr), e_phoff) + 7, 0xff),
       "it is cut off: its program headers are not all there"},
      {withByte(offsetof(ElfW(Ehdr), e_phnum), 0), "it has nothing to load"},
      {LoadFile(root_.At()), "it is no file"},
      {LoadFile(pipe), "it is no file"},
      {LoadFile(root_.At("none.so")), "No such file or directory"},
      // The loader would find this one among those of the system.
      {LoadFile("libm.so.6"), "the path is not absolute"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(row.reason, row.expected);
  // Sections are for others than the loader.
  ElfW(Ehdr) header;
  ASSERT_GE(whole_.size(), sizeof header);
  std::memcpy(&header, whole_.data(), sizeof header);
  EXPECT_EQ(Load(whole_.substr(0, header.e_shoff)), "");
}

}  // namespace
}  // namespace tarnmf::test
