// SPDX-License-Identifier: Apache-2.0
// Rules of check, explained.
#ifndef TOOLS_TARNMF_RULE_TEXT_H
#define TOOLS_TARNMF_RULE_TEXT_H

#include <string>
#include <string_view>
#include <vector>

#include "check/rules.h"
#include "platform/errors.h"

namespace tool {

std::string RuleText(const tarnmf::check::RuleT& rule);

// The code in words and the rules that come with it.
std::string CodeText(BtkErrorT code);

// Those that come with the code.
std::vector<const tarnmf::check::RuleT*> RulesWithCode(BtkErrorT code);

// The example without what only keeps it apart from the source around it; empty for none.
std::string_view ExampleText(const char* example);

// docs/rules.md.
std::string RulesPage();

}  // namespace tool

#endif  // TOOLS_TARNMF_RULE_TEXT_H
