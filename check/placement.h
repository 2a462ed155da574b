// SPDX-License-Identifier: Apache-2.0
// What an element, its attributes and their values may be where they stand, as far as their own
// descriptions do not say it.
#ifndef CHECK_PLACEMENT_H
#define CHECK_PLACEMENT_H

#include <cstdint>

#include "grammar/grammar.h"

namespace tarnmf::check {

// `parent` is what the element stands in.
bool IsRequired(const grammar::AttributeT& attribute, const grammar::ElementT& element,
                const grammar::ElementT& parent);

// Whether the word with this number may be the value of the element's attribute.
bool IsWordAdmitted(std::int32_t number, const grammar::AttributeT& attribute,
                    const grammar::ElementT& element);

// Whether classes of the affinity, an MfAffinityT, must not have the side.
bool IsSideForbidden(const grammar::ElementT& side, std::int32_t affinity);

}  // namespace tarnmf::check

#endif  // CHECK_PLACEMENT_H
