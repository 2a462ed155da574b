// SPDX-License-Identifier: Apache-2.0
#include "check/placement.h"

#include <string_view>

#include "tarnmf/values.h"

#include "grammar/intf_class.h"
#include "grammar/module.h"

namespace tarnmf::check {

using grammar::AttributeT;
using grammar::ElementT;

bool IsRequired(const AttributeT& attribute, const ElementT& element, const ElementT& parent) {
  if (!attribute.required) return false;
  // A module that stands in a side of a class needs no id.
  const bool isModuleId = &element == &grammar::kModule && std::string_view(attribute.name) == "id";
  return !isModuleId || parent.content != grammar::Content::kSide;
}

bool IsWordAdmitted(std::int32_t number, const AttributeT& attribute, const ElementT& element) {
  // Containers are services; no class is one.
  return &element != &grammar::kClass || attribute.words != &grammar::kManagedTypeWords ||
         number != kMfContainer;
}

bool IsSideForbidden(const ElementT& side, std::int32_t affinity) {
  if (&side == &grammar::kClientSide) return affinity == kMfAgentClass;
  if (&side == &grammar::kAgentSide) return affinity == kMfAppClass;
  return affinity != kMfServiceClass;
}

}  // namespace tarnmf::check
