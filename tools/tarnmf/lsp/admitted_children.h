// SPDX-License-Identifier: Apache-2.0
// Which elements may begin at a place.
#ifndef TOOLS_TARNMF_LSP_ADMITTED_CHILDREN_H
#define TOOLS_TARNMF_LSP_ADMITTED_CHILDREN_H

#include <vector>

#include "tools/tarnmf/lsp/completion_place.h"

namespace tool::lsp {

// The element of a place: that of the tag at hand, which may not be there yet, and what it stands in.
struct ElementPlace {
  tarnmf::check::NodeId parent;
  const tarnmf::grammar::ElementT& parentElement;
  tarnmf::check::NodeId atHand;  // kNoNode: nothing of it is there
};

// In the grammar's order. Those that may stand but once are left out when they are there.
std::vector<const tarnmf::grammar::ElementT*> AdmittedChildren(const CompletionPlace& place,
                                                               const ElementPlace& element);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_ADMITTED_CHILDREN_H
