// SPDX-License-Identifier: Apache-2.0
// Names of rules as people write them.
#ifndef CHECK_RULE_NAMES_H
#define CHECK_RULE_NAMES_H

#include <string_view>

#include "check/suggestions.h"

namespace tarnmf::check {

// The rules that a name which is none may have meant.
CloseNames CloseRules(std::string_view name);

}  // namespace tarnmf::check

#endif  // CHECK_RULE_NAMES_H
