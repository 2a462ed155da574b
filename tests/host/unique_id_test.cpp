// SPDX-License-Identifier: Apache-2.0
#include "platform/unique_id.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace tarnmf::test {
namespace {

constexpr char kDashed[] = "00112233-4455-6677-8899-aabbccddeeff";
constexpr char kPlain[] = "00112233445566778899aabbccddeeff";

TEST(UniqueId, ReadsAndWritesBothForms) {
  struct {
    const char* text;
    int form;
    BtkErrorT expected;
  } const rows[] = {
      {kDashed, kBtkUniIdDashed, kBtkOk},
      {"00112233-4455-6677-8899-AABBCCDDEEFF", kBtkUniIdDashed, kBtkOk},
      {kPlain, kBtkUniIdPlain, kBtkOk},
      {"00112233445566778899AaBbCcDdEeFf", kBtkUniIdPlain, kBtkOk},
      {kDashed, kBtkUniIdPlain, kBtkMalformed},
      {kPlain, kBtkUniIdDashed, kBtkMalformed},
      {"", kBtkUniIdDashed, kBtkMalformed},
      {"00112233-4455-6677-8899-aabbccddeef", kBtkUniIdDashed, kBtkMalformed},
      {"00112233-4455-6677-8899-aabbccddeeff0", kBtkUniIdDashed, kBtkMalformed},
      {"001122334-455-6677-8899-aabbccddeeff", kBtkUniIdDashed, kBtkMalformed},
      {"0011223g-4455-6677-8899-aabbccddeeff", kBtkUniIdDashed, kBtkMalformed},
      {" 0112233445566778899aabbccddeeff", kBtkUniIdPlain, kBtkMalformed},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    UniIdT id = {{0xee}};
    EXPECT_EQ(btkUniIdParse(&id, row.text, kBtkWholeText, nullptr, row.form), row.expected);
    char text[37] = "";
    ASSERT_EQ(btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdDashed, 0), kBtkOk);
    EXPECT_STREQ(text, row.expected == kBtkOk ? kDashed : "ee000000-0000-0000-0000-000000000000");
    EXPECT_EQ(btkUniIdFormat(text, 33, nullptr, &id, kBtkUniIdPlain, 0), kBtkOk);
    EXPECT_EQ(std::strlen(text), 32U);
    EXPECT_EQ(btkUniIdFormat(text, 32, nullptr, &id, kBtkUniIdPlain, 0), kBtkTooLong);
  }
}

TEST(UniqueId, StopsAfterTheIdWhenAskedFor) {
  const std::string text = std::string(kDashed) + " rest";
  UniIdT id;
  const char* end = nullptr;
  ASSERT_EQ(btkUniIdParse(&id, text.c_str(), text.size(), &end, kBtkUniIdDashed), kBtkOk);
  EXPECT_EQ(end, text.c_str() + 36);
  EXPECT_EQ(btkUniIdParse(&id, text.c_str(), 35, &end, kBtkUniIdDashed), kBtkMalformed);
}

TEST(UniqueId, MakesIds) {
  const UniIdT null = {};
  UniIdT first, second, pair, reversed;
  ASSERT_EQ(btkUniIdGen14(&first, kBtkUniIdRandom, 0), kBtkOk);
  ASSERT_EQ(btkUniIdGen14(&second, kBtkUniIdRandom, 0), kBtkOk);
  EXPECT_FALSE(btkUniIdIsEqual(&first, &second));
  ASSERT_EQ(btkUniIdCombine(&pair, &first, &second), kBtkOk);
  ASSERT_EQ(btkUniIdCombine(&reversed, &second, &first), kBtkOk);
  EXPECT_FALSE(btkUniIdIsEqual(&pair, &reversed));
  ASSERT_EQ(btkUniIdCombine(&reversed, &first, &second), kBtkOk);
  EXPECT_TRUE(btkUniIdIsEqual(&pair, &reversed));
  ASSERT_EQ(btkUniIdCombine(&pair, &null, &null), kBtkOk);
  EXPECT_FALSE(btkUniIdIsEqual(&pair, &null));
  EXPECT_GT(btkUniIdCompare(&pair, &null), 0);
}

}  // namespace
}  // namespace tarnmf::test
