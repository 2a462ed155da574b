// SPDX-License-Identifier: Apache-2.0
// What is known of an attribute's value before it is written.
#ifndef TOOLS_TARNMF_LSP_ATTRIBUTE_VALUES_H
#define TOOLS_TARNMF_LSP_ATTRIBUTE_VALUES_H

#include <span>
#include <string>
#include <vector>

#include "grammar/grammar.h"
#include "tools/tarnmf/lsp/snippet.h"

namespace tool::lsp {

// All values where they are few, without synonyms; else none.
std::vector<std::string> FixedValues(const tarnmf::grammar::AttributeT& attribute,
                                     const tarnmf::grammar::ElementT& element);

// Whether it is the id under which the element itself is known, which has to be a fresh one.
bool IsOwnId(const tarnmf::grammar::AttributeT& attribute,
             const tarnmf::grammar::ElementT& element);
std::string FreshId();

// name="value" with the places of a snippet; `values` are the fixed ones that are left.
void WriteAttribute(const tarnmf::grammar::AttributeT& attribute,
                    const tarnmf::grammar::ElementT& element, std::span<const std::string> values,
                    Snippet& snippet);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_ATTRIBUTE_VALUES_H
