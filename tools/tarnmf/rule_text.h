// SPDX-License-Identifier: Apache-2.0
// Rules of check, explained.
#ifndef TOOLS_TARNMF_RULE_TEXT_H
#define TOOLS_TARNMF_RULE_TEXT_H

#include <string>

#include "check/rules.h"
#include "platform/errors.h"

namespace tool {

std::string RuleText(const tarnmf::check::RuleT& rule);

// The code in words and the rules that come with it.
std::string CodeText(BtkErrorT code);

// docs/rules.md.
std::string RulesPage();

}  // namespace tool

#endif  // TOOLS_TARNMF_RULE_TEXT_H
