// SPDX-License-Identifier: Apache-2.0
#include "platform/filesystem.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "platform/host/btkhost.h"
#include "platform/runtime.h"
#include "platform/stream.h"
#include "tests/support/temp_directory.h"
#include "tests/support/wide_string.h"

namespace tarnmf::test {
namespace {

TEST(Paths, CarryEveryByteThroughTheirWideText) {
  for (const char* narrow :
       {"plain", "\xc3\xa9/\xf0\x9f\x98\x80", "broken\xff\xc3/x", "\xed\xb2\x80", "\x80\xbf"}) {
    EXPECT_STREQ(btkFSPath(btkFSPath(narrow).WideText()).NarrowText(), narrow);
  }
}

TEST(Paths, HeadsAndTails) {
  struct {
    const char* path;
    const char* head;
    const char* tail;
  } const rows[] = {
      {"/a/b", "/a", "b"}, {"/a/b/", "/a", "b"}, {"/a", "/", "a"},
      {"/", "/", ""},      {"a", ".", "a"},      {"a/b", "a", "b"},
      {"a//b", "a", "b"},  {".", "./..", "."},   {"a/..", "a/../..", ".."},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_STREQ(btkFSEntry(row.path).GetHead().Path().NarrowText(), row.head);
    EXPECT_STREQ(btkFSEntry(row.path).GetTail().Text(), row.tail);
  }
}

TEST(Paths, ListsMatchingFilesByName) {
  const TempDirectory directory;
  for (const char* name : {"b.tmfx", "a.tmfx", "a.tmfx.old", "c.tmf", "tmfx"})
    directory.Write(name, "");
  std::filesystem::create_directory(directory.Path() / "folder.tmfx");
  const auto names = [&](const char* pattern) {
    std::string all;
    const btkFSList list(btkFSEntry(directory.At().c_str()), pattern);
    for (unsigned i = 0; i < list.Count(); ++i)
      all += std::string(list[i].GetTail().Text()) + " ";
    return all;
  };
  EXPECT_EQ(names("*.tmfx"), "a.tmfx b.tmfx ");
  EXPECT_EQ(names("?.tmfx"), "a.tmfx b.tmfx ");
  EXPECT_EQ(names("*a*x*"), "a.tmfx a.tmfx.old ");
  const btkFSList none(btkFSEntry("/no/such/folder"), "*");
  EXPECT_EQ(none.Count() + none.ProblemCount(), 0U);
}

TEST(Paths, TellWhyAListIsIncomplete) {
  const TempDirectory directory;
  const std::string file = directory.Write("a", "");
  const btkFSList list(btkFSEntry(file.c_str()), "*");
  ASSERT_EQ(list.ProblemCount(), 1U);
  EXPECT_STRNE(list.ProblemText(0), "");
  EXPECT_EQ(list.ProblemPlace(0).Path().NarrowText(), file);
}

TEST(Paths, ListsAreValues) {
  btkFSEntry file("folder");
  (file += "s") /= "a";
  btkFSList list(0);
  list.Append(file);
  const btkFSList copy(list);
  list.Append(file);
  btkFSList moved(std::move(list));
  list = copy;
  EXPECT_EQ(copy.Count() * 100 + moved.Count() * 10 + list.Count(), 121U);
  btkZString path("other");
  path = list[0].Path().NarrowText();
  EXPECT_TRUE(path == BTK_W("folders/a"));
}

TEST(FileStream, ReadsToTheEndAndTellsFailureFromEnd) {
  const TempDirectory directory;
  const std::string file = directory.Write("f", "12345");
  btkFileStream stream;
  ASSERT_EQ(stream.Open(file.c_str(), kBtkOpenRead, btkGetAsciiSerializer()), kBtkOk);
  char buffer[8];
  EXPECT_EQ(stream.Read(buffer, 3), 3);
  EXPECT_EQ(stream.Read(buffer, 8), 2);
  EXPECT_EQ(stream.Read(buffer, 8), 0);
  EXPECT_EQ(stream.State() & kBtkStreamFailed, 0U);
  stream.Close();
  EXPECT_EQ(stream.Read(buffer, 8), -1);
  EXPECT_NE(stream.State() & kBtkStreamFailed, 0U);
  EXPECT_EQ(stream.Open(directory.At().c_str(), kBtkOpenRead, nullptr), kBtkMissing);
  EXPECT_EQ(stream.Open((file + "x").c_str(), kBtkOpenRead, nullptr), kBtkMissing);
  auto* const counted = new btkFileStream;
  EXPECT_EQ(counted->AddRef(), 1);
  EXPECT_EQ(counted->btkRefCounted::Release(), 0);
}

TEST(Process, AnswersAsItWasToldToOrAsItIs) {
  btkWChar path[261];
  btkHostSetProcessLoadpoint(BTK_W("/lp"));
  btkHostSetExecutablePath(BTK_W("/viewer"));
  btkHostSetMachineTypes("here", "there");
  EXPECT_TRUE(btkGetLoadpointW(path, 261) == 3 && WideString(path) == BTK_W("/lp"));
  EXPECT_EQ(btkDlmGetCurProcessImagePathW(path, 8), kBtkOk);
  EXPECT_EQ(path, WideString(BTK_W("/viewer")));
  EXPECT_EQ(btkGetVexMachine() + std::string(btkGetVexMachine3264("")), "herethere");
  btkHostSetProcessLoadpoint(nullptr);
  btkHostSetExecutablePath(nullptr);
  btkHostSetMachineTypes(nullptr, nullptr);
  EXPECT_EQ(btkGetLoadpointW(path, 261), 0U);
  ASSERT_EQ(btkDlmGetCurProcessImagePathW(path, 261), kBtkOk);
  EXPECT_EQ(std::string(btkFSEntry(path).GetTail().Text()).substr(0, 11), "tarnmf_host");
  EXPECT_EQ(btkDlmGetCurProcessImagePathW(path, 4), kBtkTooLong);
  EXPECT_EQ(btkGetExecutableNameW(path, 261, nullptr, BTK_W("viewer")), kBtkOk);
}

}  // namespace
}  // namespace tarnmf::test
