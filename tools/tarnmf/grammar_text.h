// SPDX-License-Identifier: Apache-2.0
// Elements and attributes of manifests, explained.
#ifndef TOOLS_TARNMF_GRAMMAR_TEXT_H
#define TOOLS_TARNMF_GRAMMAR_TEXT_H

#include <string>

#include "grammar/grammar.h"

namespace tool {

std::string ElementText(const tarnmf::grammar::ElementT& element);
std::string AttributeText(const tarnmf::grammar::ElementT& element,
                          const tarnmf::grammar::AttributeT& attribute);

}  // namespace tool

#endif  // TOOLS_TARNMF_GRAMMAR_TEXT_H
