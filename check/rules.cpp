// SPDX-License-Identifier: Apache-2.0
#include "check/rules.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "check/catalogue/batch_rules.h"
#include "check/catalogue/check_rules.h"
#include "check/catalogue/content_rules.h"
#include "check/catalogue/document_rules.h"
#include "check/catalogue/element_rules.h"
#include "check/catalogue/file_rules.h"
#include "check/catalogue/layout_rules.h"
#include "check/catalogue/value_rules.h"

namespace tarnmf::check {
namespace {

constexpr std::array<RuleT, kRuleCount> Joined() {
  std::array<RuleT, kRuleCount> rules{};
  std::size_t count = 0;
  const auto append = [&](std::span<const RuleT> part) {
    for (const RuleT& rule : part)
      rules[count++] = rule;
  };
  append(kDocumentRules);
  append(kElementRules);
  append(kValueRules);
  append(kContentRules);
  append(kBatchRules);
  append(kFileRules);
  append(kLayoutRules);
  append(kCheckRules);
  return rules;
}

constexpr std::array<RuleT, kRuleCount> kRules = Joined();

// Every rule has its row, at its own place.
constexpr bool AreInOrder() {
  for (std::size_t i = 0; i < kRules.size(); ++i) {
    if (static_cast<std::size_t>(kRules[i].rule) != i || kRules[i].name == nullptr) return false;
  }
  return true;
}
static_assert(AreInOrder());

}  // namespace

std::span<const RuleT> Catalogue() {
  return kRules;
}

const RuleT& Describe(Rule rule) {
  return kRules[static_cast<std::size_t>(rule)];
}

std::optional<Rule> RuleNamed(std::string_view name) {
  const auto row = std::find_if(kRules.begin(), kRules.end(),
                                [&](const RuleT& rule) { return rule.name == name; });
  return row != kRules.end() ? std::optional(row->rule) : std::nullopt;
}

}  // namespace tarnmf::check
