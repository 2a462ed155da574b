// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/rule_json.h"

#include <utility>

#include "tarnmf/error_text.h"

#include "check/settings.h"
#include "tools/tarnmf/rule_text.h"

namespace tool {
namespace {

using namespace tarnmf::check;

const char* FixWord(Fix fix) {
  switch (fix) {
    case Fix::kNone:
      return "none";
    case Fix::kOffered:
      return "offered";
    case Fix::kSafe:
      return "safe";
  }
  return "";
}

Json ExampleJson(const char* example) {
  return example != nullptr ? Json(ExampleText(example)) : Json();
}

}  // namespace

Json RuleJson(const RuleT& rule) {
  return {{"name", rule.name},
          {"severity", LevelName(rule.severity)},
          {"codes", rule.codes},
          {"summary", rule.summary},
          {"advice", rule.advice},
          {"fix", FixWord(rule.fix)},
          {"wrong", ExampleJson(rule.wrong)},
          {"right", ExampleJson(rule.right)}};
}

Json CodeJson(BtkErrorT code) {
  const tarnmf::ErrorText text = tarnmf::DescribeError(code);
  Json rules = Json::array();
  for (const RuleT* rule : RulesWithCode(code))
    rules.push_back({{"name", rule->name}, {"summary", rule->summary}});
  return {{"code", static_cast<int>(code)},
          {"name", text.name},
          {"meaning", text.sentence},
          {"rules", std::move(rules)}};
}

}  // namespace tool
