// SPDX-License-Identifier: Apache-2.0
#include "platform/filesystem.h"

#include <gtest/gtest.h>
#include <string>

#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"
#include "platform/runtime.h"
#include "platform/stream.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {
namespace {

TEST(Paths, BeginWithDrivesAndShares) {
  struct {
    const char* path;
    const char* head;
    const char* tail;
  } const rows[] = {
      {R"(C:\a\b)", R"(C:\a)", "b"},
      {R"(C:\a)", R"(C:\)", "a"},
      {R"(C:\)", R"(C:\)", ""},
      {"c:a", "c:", "a"},
      {R"(\\host\share\a)", R"(\\host\share\)", "a"},
      {R"(\\host\share)", R"(\\host\share)", ""},
      {R"(a\b/c\)", R"(a\b)", "c"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_STREQ(btkFSEntry(row.path).GetHead().Path().NarrowText(), row.head);
    EXPECT_STREQ(btkFSEntry(row.path).GetTail().Text(), row.tail);
  }
}

TEST(Paths, AreJoinedWithTheSeparatorThatTheyHave) {
  const char* const rows[][2] = {
      {R"(C:\a)", R"(C:\a\b)"}, {"C:/a", "C:/a/b"}, {"a", "a/b"}, {"c:", "c:b"},
      {R"(\a/)", R"(\a/b)"},
  };
  for (const auto& [path, joined] : rows)
    EXPECT_STREQ((btkFSEntry(path) /= "b").Path().NarrowText(), joined);
}

TEST(Paths, AreComparedAsTheSystemDoes) {
  struct {
    const btkWChar* left;
    const btkWChar* right;
    int sign;
  } const rows[] = {
      {L"/a/b", L"\\A\\B\\", 0}, {L"\u00e4\u0101", L"\u00c4\u0100", 0},
      {L"c:\\", L"C:", 1},       {L"a", L"B", -1},
      {L"\u00df", L"ss", 1},     {L"//h/s/", L"//h/s", 1},
  };
  const auto id = [](const btkWChar* path) {
    UniIdT result = {};
    EXPECT_EQ(btkHostDlmManager().QueryLoadpointId(&result, path), kBtkOk);
    return result;
  };
  for (const auto& row : rows) {
    const int order = Cmp_cWPaths_Safe(&row.left, &row.right);
    EXPECT_EQ((order > 0) - (order < 0), row.sign) << btkFSPath(row.left).NarrowText();
    const UniIdT left = id(row.left), right = id(row.right);
    EXPECT_EQ(btkUniIdIsEqual(&left, &right), row.sign == 0);
  }
  EXPECT_TRUE(btkZString("Viewer.EXE") == L"viewer.exe");
}

TEST(Paths, ListFilesOfEitherCaseAndOfAnyName) {
  const TempDirectory directory;
  for (const char* name : {"A.TMFX", "\xc3\xa4\xf0\x9f\x98\x80.tmfx", "b.tmf"})
    directory.Write(name, "");
  const btkFSList list(btkFSEntry(directory.At().c_str()), "*.tmfx");
  ASSERT_EQ(list.Count(), 2U);
  EXPECT_STREQ(list[0].GetTail().Text(), "A.TMFX");
  EXPECT_STREQ(list[1].GetTail().Text(), "\xc3\xa4\xf0\x9f\x98\x80.tmfx");
}

TEST(FileStream, OpensDevicesOnlyWhereTheyAreAdmitted) {
  btkFileStream stream;
  EXPECT_EQ(stream.Open("NUL", kBtkOpenRead, nullptr), kBtkMissing);
  btkHostAdmitSpecialFile("NUL");
  EXPECT_EQ(stream.Open("NUL", kBtkOpenRead, nullptr), kBtkOk);
}

TEST(EmbeddedDlm, KnowsEveryWayUp) {
  const TempDirectory root;
  const std::string loadpoint = root.At();
  btkHostDlmManager manager;
  for (const wchar_t* path : {L"..", L"a\\..", L"a/.. /b", L"...", L"..."}) {
    btkZString file;
    EXPECT_EQ(manager.ResolveModule(&file, "id", "SHAREDLIB", L"a", path, 0,
                                    btkFSPath(loadpoint.c_str()).WideText(), nullptr, 0, nullptr),
              kBtkNotFound);
    EXPECT_EQ(manager.Resolutions().back().refusal, kBtkHostLeadsUp)
        << btkFSPath(path).NarrowText();
  }
}

}  // namespace
}  // namespace tarnmf::test
