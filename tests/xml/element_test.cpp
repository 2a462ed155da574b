// SPDX-License-Identifier: Apache-2.0
// What a document and its dump cannot say: fresh ids, and texts of any length.
#include <gtest/gtest.h>

#include "tests/support/documents.h"
#include "tests/support/parse.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {
namespace {

const std::string kNestedModule =
    R"(<clientside multiplicity="perLdp"><module name="n"/></clientside></class>)";

TEST(NestedModule, IsGivenAFreshId) {
  MfLdpDataT data;
  ASSERT_EQ(Parse(InRoot(WithIds("<class id=\"$1\">" + kNestedModule + "<class id=\"$2\">" +
                                 kNestedModule)),
                  data),
            kBtkOk);
  ASSERT_EQ(data.modules.count, 2);
  for (int i = 0; i < 2; ++i) {
    EXPECT_STREQ(data.classes[i]->sides[kMfClientSide].moduleref, data.modules[i]->id);
    EXPECT_EQ(std::string(data.modules[i]->id).size(), 32U);
    EXPECT_EQ(data.modules[i]->flags, kMfModuleGeneratedId | kMfModuleOwnsLoadpoint);
    EXPECT_EQ(data.modules[i]->impls[0]->version[0], 0U);
  }
  EXPECT_STRNE(data.modules[0]->id, data.modules[1]->id);
}

// The XML library reads long texts in pieces.
TEST(RoleContent, LongTextsAreWhole) {
  std::string text, dump;
  for (int word = 0; word < 20'000; ++word) {
    const std::string number = std::to_string(word);
    text += number + (word % 3 == 0 ? " &quot;x y&quot;" : "\n");
    dump += "    arg text=\"" + number + "\"\n";
    if (word % 3 == 0) dump += "    arg text=\"x y\"\n";
  }
  const std::string value(300'000, 'v');
  dump += "    env action=1 flags=1 name=\"" + value + "\" value=\"" + value + "\"\n";
  EXPECT_EQ(ParseAndDump(InRoot("<runnable moduleref=\"m\"><app nameid=\"a\"><args><arg>" + text +
                                "</arg></args><env><set name=\"" + value + "\">" + value +
                                "</set></env></app></runnable>")),
            "runnable moduleref=\"m\" loadpoint=\"\"+\n  app nameid=\"a\"\n" + dump);
}

}  // namespace
}  // namespace tarnmf::test
