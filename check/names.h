// SPDX-License-Identifier: Apache-2.0
// Names of documents looked up in the grammar.
#ifndef CHECK_NAMES_H
#define CHECK_NAMES_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "grammar/grammar.h"

namespace tarnmf::check {

// A name as the library compares it.
std::string Folded(std::string_view written);

// Null when the element has no such child or attribute.
const grammar::ElementT* ChildNamed(const grammar::ElementT& parent, std::string_view written);
const grammar::AttributeT* AttributeNamed(const grammar::ElementT& element,
                                          std::string_view written);

// The element of this name wherever it stands; null when there is none.
const grammar::ElementT* ElementNamed(std::string_view written);

// The elements that it may stand in; of a root grammar::kDocument.
std::vector<const grammar::ElementT*> ParentsOf(const grammar::ElementT& element);

}  // namespace tarnmf::check

#endif  // CHECK_NAMES_H
