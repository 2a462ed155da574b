// SPDX-License-Identifier: Apache-2.0
// The elements of the grammar one after the other.
#ifndef TOOLS_TARNMF_GRAMMAR_ELEMENTS_H
#define TOOLS_TARNMF_GRAMMAR_ELEMENTS_H

#include <vector>

#include "grammar/manifest.h"

namespace tool {

// Each element once, the roots first, then what stands in them, level by level.
std::vector<const tarnmf::grammar::ElementT*> GrammarElements();

}  // namespace tool

#endif  // TOOLS_TARNMF_GRAMMAR_ELEMENTS_H
