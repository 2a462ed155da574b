// SPDX-License-Identifier: Apache-2.0
#include "check/rule_names.h"

#include "check/rules.h"

namespace tarnmf::check {

CloseNames CloseRules(std::string_view name) {
  CloseNames names(name);
  for (const RuleT& rule : Catalogue())
    names.Offer(rule.name);
  return names;
}

}  // namespace tarnmf::check
