// SPDX-License-Identifier: Apache-2.0
#include "platform/text.h"

#include <gtest/gtest.h>
#include <string>

#include "platform/memory.h"
#include "platform/runtime.h"
#include "support/owned.h"
#include "tests/support/wide_string.h"

namespace tarnmf::test {
namespace {

TEST(Text, ConvertsBothWaysAndFillsBuffersToTheLastByte) {
  std::string euros;  // longer than a buffer on the stack
  for (int i = 0; i < 1000; ++i)
    euros += "\xe2\x82\xac";
  const struct {
    WideString wide;
    std::string narrow;
  } rows[] = {
      {BTK_W(""), ""},
      {BTK_W("module.id"), "module.id"},
      {BTK_W("\u00e9\u20ac"), "\xc3\xa9\xe2\x82\xac"},
      {BTK_W("a\U0001f600"), "a\xf0\x9f\x98\x80"},
      {WideString(1000, BTK_W('\u20ac')), euros},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.narrow);
    Utf8Text narrow;
    std::size_t length = 99;
    ASSERT_EQ(btkStrUtf16ToUtf8Alloc(Out(narrow), &length, row.wide.c_str(), kBtkWholeText),
              kBtkOk);
    EXPECT_EQ(narrow.get(), row.narrow);
    EXPECT_EQ(length, row.narrow.size());
    WideText wide;
    ASSERT_EQ(btkStrMultibyteToWideAlloc(Out(wide), &length, row.narrow.c_str(), kBtkWholeText),
              kBtkOk);
    EXPECT_EQ(wide.get(), row.wide);
    EXPECT_EQ(length, row.wide.size());
    std::string buffer(row.narrow.size() + 1, '#');
    const auto fill = [&](std::size_t size) {
      return btkStrUtf16ToUtf8(buffer.data(), size, &length, row.wide.c_str(), kBtkWholeText);
    };
    EXPECT_EQ(fill(buffer.size()), kBtkOk);
    EXPECT_TRUE(buffer.c_str() == row.narrow && length == row.narrow.size());
    EXPECT_EQ(fill(buffer.size() - 1), kBtkTooLong);
  }
}

TEST(Text, RefusesWhatIsNotText) {
  const btkWChar loneLead[] = {0xd83d, BTK_W('x'), 0};
  const btkWChar loneTrail[] = {BTK_W('x'), 0xde00, 0};
  const btkWChar cutPair[] = {BTK_W('x'), 0xd83d, 0};
  for (const btkWChar* wide : {loneLead, loneTrail, cutPair}) {
    Utf8Text narrow;
    char buffer[16];
    EXPECT_EQ(btkStrUtf16ToUtf8Alloc(Out(narrow), nullptr, wide, kBtkWholeText), kBtkBadText);
    EXPECT_FALSE(narrow);
    EXPECT_EQ(btkStrUtf16ToUtf8(buffer, sizeof buffer, nullptr, wide, kBtkWholeText), kBtkBadText);
  }
  for (const char* narrow : {"\xff", "a\xc3", "\xed\xa0\x80"}) {
    WideText wide;
    EXPECT_EQ(btkStrMultibyteToWideAlloc(Out(wide), nullptr, narrow, kBtkWholeText), kBtkBadText);
    EXPECT_FALSE(wide);
  }
}

TEST(Text, LowersAsciiLettersOnly) {
  Utf8Text lower;
  ASSERT_EQ(btkStrUtf8ToLowerAlloc(Out(lower), nullptr, "AZ[@`az\xc3\x89", kBtkWholeText), kBtkOk);
  EXPECT_STREQ(lower.get(), "az[@`az\xc3\x89");
}

int g_calls = 0;

TEST(Runtime, ComparesCountsAndCleansUp) {
  EXPECT_EQ(btk_strcasecmp("aB-", "Ab-"), 0);
  EXPECT_TRUE(btk_iswspace(0x3000) && !btk_iswspace(BTK_W('a')));
  const char* const texts[] = {"B", "a"};
  EXPECT_LT(CmpCase_cStrings_Safe(&texts[0], &texts[1]), 0);
  EXPECT_EQ(btk_getenv("TARNMF_NO_SUCH_VARIABLE"), nullptr);
  std::int32_t counter = 1;
  EXPECT_EQ(btkAoInc32(&counter) * 10 + btkAoDec32(&counter), 21);
  const btkCleanupT anchor = [] { g_calls = g_calls * 10 + 1; };
  EXPECT_EQ(btkPushCleanupCbLow(anchor, anchor, 0), 1);
  EXPECT_EQ(btkPushCleanupCbLow(
                anchor, [] { g_calls = g_calls * 10 + 2; }, 0),
            0);
  btkDlmExitNotify(anchor);
  btkDlmExitNotify(anchor);
  EXPECT_EQ(g_calls, 21);
}

TEST(Runtime, ComparesPathsWithoutTrailingSeparator) {
  struct {
    const btkWChar* left;
    const btkWChar* right;
    int sign;
  } const rows[] = {
      {nullptr, nullptr, 0},
      {nullptr, BTK_W(""), -1},
      {BTK_W("a"), nullptr, 1},
      {BTK_W("/a/b"), BTK_W("/a/b/"), 0},
      {BTK_W("/"), BTK_W(""), 1},
      {BTK_W("/a"), BTK_W("/b"), -1},
      {BTK_W("/a"), BTK_W("/a/b"), -1},
  };
  for (const auto& row : rows) {
    const int order = Cmp_cWPaths_Safe(&row.left, &row.right);
    EXPECT_EQ((order > 0) - (order < 0), row.sign);
  }
}

}  // namespace
}  // namespace tarnmf::test
