// SPDX-License-Identifier: Apache-2.0
// The examples of the catalogue are what they claim to be.
#include <gtest/gtest.h>
#include <string>

#include "check/check.h"
#include "check/verdict.h"
#include "tests/check/example.h"
#include "tests/support/system_names.h"

namespace tarnmf::check {
namespace {

// Most examples have no libraries, which is not what they are about.
bool IsAboutFiles(Rule rule) {
  return rule == Rule::kFileMissing || rule == Rule::kNoImplementation;
}

// The rules that are found in an example of one of them.
std::string RulesFound(const std::string& text, Rule about) {
  const test::Example example(text);
  DiskFiles files;
  SettingsFinder settings(files);
  Report report = Check(example.Request(), files);
  const Verdict verdict = Judge(report, settings, Levels());
  std::string rules;
  for (const Finding& finding : verdict.findings) {
    const std::string name = Describe(finding.rule).name;
    if (rules == name || (IsAboutFiles(finding.rule) && !IsAboutFiles(about))) continue;
    rules += (rules.empty() ? "" : " ") + name;
  }
  return rules;
}

TEST(Catalogue, ExamplesBreakTheirRuleAlone) {
  for (const RuleT& rule : Catalogue()) {
    SCOPED_TRACE(rule.name);
    EXPECT_EQ(RuleNamed(rule.name), rule.rule);
    EXPECT_STRNE(rule.advice, "");
    EXPECT_EQ(rule.wrong == nullptr, rule.right == nullptr);
    if (rule.wrong == nullptr || rule.right == nullptr) continue;
    EXPECT_EQ(RulesFound(test::InSystemNames(rule.wrong), rule.rule), rule.name);
    EXPECT_EQ(RulesFound(test::InSystemNames(rule.right), rule.rule), "");
  }
  EXPECT_EQ(RuleNamed("no-such-rule"), std::nullopt);
}

}  // namespace
}  // namespace tarnmf::check
