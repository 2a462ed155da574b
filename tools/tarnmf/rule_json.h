// SPDX-License-Identifier: Apache-2.0
// Rules and codes of check, explained as JSON with what rule_text.h says in sentences.
#ifndef TOOLS_TARNMF_RULE_JSON_H
#define TOOLS_TARNMF_RULE_JSON_H

#include "check/rules.h"
#include "platform/errors.h"
#include "tools/tarnmf/json_form.h"

namespace tool {

Json RuleJson(const tarnmf::check::RuleT& rule);
Json CodeJson(BtkErrorT code);

}  // namespace tool

#endif  // TOOLS_TARNMF_RULE_JSON_H
