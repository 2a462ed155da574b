// SPDX-License-Identifier: Apache-2.0
// An element as it is inserted.
#ifndef TOOLS_TARNMF_LSP_ELEMENT_TEXT_H
#define TOOLS_TARNMF_LSP_ELEMENT_TEXT_H

#include "grammar/grammar.h"
#include "tools/tarnmf/lsp/snippet.h"

namespace tool::lsp {

struct NewElement {
  const tarnmf::grammar::ElementT& described;
  const tarnmf::grammar::ElementT& parent;
  bool isOfWorker;  // it is a side of a worker class
};

// Its tags with the attributes that it cannot do without, from its name on.
void WriteElement(const NewElement& element, Snippet& snippet);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_ELEMENT_TEXT_H
