// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/grammar_elements.h"

#include <algorithm>

namespace tool {

std::vector<const tarnmf::grammar::ElementT*> GrammarElements() {
  using tarnmf::grammar::ElementT;
  std::vector<const ElementT*> elements(tarnmf::grammar::kDocument.children.begin(),
                                        tarnmf::grammar::kDocument.children.end());
  for (std::size_t next = 0; next < elements.size(); ++next) {
    for (const ElementT* child : elements[next]->children) {
      if (std::find(elements.begin(), elements.end(), child) == elements.end())
        elements.push_back(child);
    }
  }
  return elements;
}

}  // namespace tool
