// SPDX-License-Identifier: Apache-2.0
#include "platform/filesystem.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/host/btkhost.h"
#include "platform/runtime.h"
#include "platform/stream.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

TEST(Paths, TellWhyALinkCannotBeListed) {
  const TempDirectory directory;
  const std::string loop = directory.At("loop");
  std::filesystem::create_directory_symlink("loop", loop);
  const btkFSList list(btkFSEntry(loop.c_str()), "*");
  ASSERT_EQ(list.ProblemCount(), 1U);
  EXPECT_STREQ(list.ProblemText(0), "Too many levels of symbolic links");
}

TEST(Paths, DifferInEveryByte) {
  const btkWChar* const paths[] = {u"/a/b", u"/a/B"};
  EXPECT_GT(Cmp_cWPaths_Safe(&paths[0], &paths[1]), 0);
  const TempDirectory directory;
  directory.Write("a.TMFX", "");
  directory.Write("\xff.tmfx", "");  // a name is bytes, whatever they stand for
  const btkFSList list(btkFSEntry(directory.At().c_str()), "*.tmfx");
  ASSERT_EQ(list.Count(), 1U);
  btkFileStream stream;
  EXPECT_EQ(stream.Open(list[0].Path().NarrowText(), kBtkOpenRead, nullptr), kBtkOk);
  EXPECT_FALSE(btkZString("Viewer") == BTK_W("viewer"));
}

TEST(FileStream, WaitsForPipesOnlyWhereTheyAreAdmitted) {
  const TempDirectory directory;
  const std::string pipe = directory.At("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  btkFileStream stream;
  EXPECT_EQ(stream.Open(pipe.c_str(), kBtkOpenRead, nullptr), kBtkMissing);
  std::fstream writer(pipe);
  writer << 'x' << std::flush;
  btkHostAdmitSpecialFile(pipe.c_str());
  char buffer[8];
  EXPECT_EQ(stream.Open(pipe.c_str(), kBtkOpenRead, nullptr), kBtkOk);
  EXPECT_EQ(stream.Read(buffer, 1), 1);
}

}  // namespace
}  // namespace tarnmf::test
