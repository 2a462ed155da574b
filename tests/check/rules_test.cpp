#include "check/rules.h"

#include <gtest/gtest.h>
#include <string>

namespace tarnmf::check {
namespace {

TEST(Catalogue, NamesAreUnique) {
  for (const RuleT& rule : Catalogue())
    EXPECT_EQ(RuleNamed(rule.name), rule.rule) << rule.name;
  EXPECT_EQ(RuleNamed("no-such-rule"), std::nullopt);
}

}  // namespace
}  // namespace tarnmf::check
