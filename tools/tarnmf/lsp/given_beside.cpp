// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/given_beside.h"

#include <algorithm>

#include "tools/tarnmf/lsp/attribute_values.h"

namespace tool::lsp {

using tarnmf::check::GivenAttributes;
using tarnmf::grammar::AttributeT;
using tarnmf::grammar::ConditionT;

GivenBeside::GivenBeside(const tarnmf::check::Document& document, const Cursor& cursor)
    : element_(*cursor.element),
      atHand_(cursor.attribute),
      given_(document, cursor.node, *cursor.element) {}

bool GivenBeside::Has(std::string_view term) const {
  const std::size_t equals = term.find('=');
  const std::string_view name = term.substr(0, equals);
  const auto& known = given_.AllKnown();
  const bool isThere =
      std::any_of(known.begin(), known.end(), [&](const GivenAttributes::Known& each) {
        return each.written != atHand_ && each.described->name == name;
      });
  return isThere && given_.StateOfTerm(term) == GivenAttributes::State::kGiven;
}

bool GivenBeside::Excludes(const AttributeT& attribute) const {
  const auto& conditions = element_.conditions;
  return std::any_of(conditions.begin(), conditions.end(), [&](const ConditionT& condition) {
    if (condition.kind != ConditionT::kExcludes) return false;
    return (condition.a == std::string_view(attribute.name) && Has(condition.b)) ||
           (condition.b == std::string_view(attribute.name) && Has(condition.a));
  });
}

bool GivenBeside::LacksPartnerOf(const AttributeT& attribute) const {
  const auto& conditions = element_.conditions;
  return std::any_of(conditions.begin(), conditions.end(), [&](const ConditionT& condition) {
    return condition.kind == ConditionT::kNeeds &&
           condition.a == std::string_view(attribute.name) && !Has(condition.b);
  });
}

std::vector<std::string> GivenBeside::FixedValuesOf(const AttributeT& attribute) const {
  std::vector<std::string> values = FixedValues(attribute, element_);
  for (const ConditionT& condition : element_.conditions) {
    if (condition.kind != ConditionT::kExcludes || !Has(condition.b)) continue;
    std::erase_if(values, [&](const std::string& value) {
      return condition.a == std::string(attribute.name) + "=" + value;
    });
  }
  return values;
}

}  // namespace tool::lsp
