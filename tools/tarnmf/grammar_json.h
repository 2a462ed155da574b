// SPDX-License-Identifier: Apache-2.0
// Elements and attributes of manifests as JSON, with what grammar_sentences.h says of them.
#ifndef TOOLS_TARNMF_GRAMMAR_JSON_H
#define TOOLS_TARNMF_GRAMMAR_JSON_H

#include <string>

#include "grammar/grammar.h"
#include "tools/tarnmf/json_form.h"

namespace tool {

Json ElementJson(const tarnmf::grammar::ElementT& element);
// The attribute with its element and the conditions that mention it.
Json AttributeOfElementJson(const tarnmf::grammar::ElementT& element,
                            const tarnmf::grammar::AttributeT& attribute);

// The whole grammar, for json_format::kSchema.
std::string JsonSchema();

}  // namespace tool

#endif  // TOOLS_TARNMF_GRAMMAR_JSON_H
