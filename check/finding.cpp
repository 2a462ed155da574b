// SPDX-License-Identifier: Apache-2.0
#include "check/finding.h"

#include <utility>

namespace tarnmf::check {

Finding Found(Rule rule, BtkErrorT code, Place place, std::string message) {
  Finding finding;
  finding.rule = rule;
  finding.severity = Describe(rule).severity;
  finding.code = code;
  finding.place = place;
  finding.message = std::move(message);
  return finding;
}

}  // namespace tarnmf::check
