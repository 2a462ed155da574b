#include <cstddef>
#include <cstring>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <link.h>
#include <string>
#include <string_view>
#include <sys/stat.h>

#include "platform/host/embedded_dlm.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

class Preloading : public testing::Test {
 protected:
  // Why a library with this content is not loaded; empty: it is.
  std::string Load(std::string_view content) {
    return LoadFile(root_.Write("lib" + std::to_string(number_++) + ".so", content));
  }
  std::string LoadFile(const std::string& path) {
    void* handle = nullptr;
    const BtkErrorT code = manager_.PreloadModule(&handle, path.c_str(), 0, 0, nullptr, nullptr);
    const btkHostPreloadT& preload = manager_.Preloads().back();
    EXPECT_EQ(preload.path, path);
    EXPECT_EQ(code, preload.isLoaded ? kBtkOk : kBtkNotFound);
    EXPECT_EQ(handle != nullptr, preload.isLoaded);
    EXPECT_EQ(*preload.failure == '\0', preload.isLoaded);
    return preload.failure;
  }

  std::ifstream file_{TARNMF_PROBE_LIBRARY, std::ios::binary};
  const std::string whole_{std::istreambuf_iterator<char>(file_), {}};
  const TempDirectory root_;
  btkHostDlmManager manager_;
  int number_ = 0;
};

TEST_F(Preloading, SurvivesLibrariesThatAreCutOff) {
  ElfW(Ehdr) header;
  ASSERT_GE(whole_.size(), sizeof header);
  std::memcpy(&header, whole_.data(), sizeof header);
  // Past its segments a library can be loaded, whatever is cut off behind them.
  bool wasLoaded = false;
  for (std::size_t length = 0; length < whole_.size(); length += whole_.size() / 64 + 1) {
    const bool isLoaded = Load(whole_.substr(0, length)).empty();
    EXPECT_TRUE(isLoaded || !wasLoaded) << length;
    wasLoaded = isLoaded;
  }
  EXPECT_EQ(Load(whole_.substr(0, header.e_shoff)), "");
  EXPECT_EQ(Load(whole_), "");
}

TEST_F(Preloading, RefusesWhatIsNoLibraryOfThisMachine) {
  const auto withByte = [&](std::size_t offset, int byte) {
    std::string damaged = whole_;
    damaged.at(offset) = static_cast<char>(byte);
    return Load(damaged);
  };
  const std::string pipe = (root_.Path() / "pipe.so").string();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const struct {
    std::string reason, expected;
  } rows[] = {
      {Load(std::string(200, '#')), "it is no library"},
      {withByte(EI_CLASS, ELFCLASSNONE), "it is for another kind of machine"},
      {withByte(EI_DATA, ELFDATANONE), "it is for another kind of machine"},
      {withByte(offsetof(ElfW(Ehdr), e_machine), 0xff), "it is for another kind of machine"},
      {withByte(offsetof(ElfW(Ehdr), e_type), ET_REL), "it is no shared library"},
      {withByte(offsetof(ElfW(Ehdr), e_phentsize), 1), "its header is damaged"},
      {withByte(offsetof(ElfW(Ehdr), e_phoff) + 7, 0xff),
       "it is cut off: its program headers are not all there"},
      {withByte(offsetof(ElfW(Ehdr), e_phnum), 0), "it has nothing to load"},
      {LoadFile(root_.Path().string()), "it is no file"},
      {LoadFile(pipe), "it is no file"},
      {LoadFile((root_.Path() / "none.so").string()), "No such file or directory"},
      // The loader would find this one among those of the system.
      {LoadFile("libm.so.6"), "the path is not absolute"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(row.reason, row.expected);
  manager_.SetPreloadMode(kBtkHostRecordsOnly);
  EXPECT_EQ(manager_.PreloadModule(nullptr, TARNMF_PROBE_LIBRARY, 0, 0, nullptr, nullptr), kBtkOk);
  EXPECT_FALSE(manager_.Preloads().back().isLoaded);
}

}  // namespace
}  // namespace tarnmf::test
