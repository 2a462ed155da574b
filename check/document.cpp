// SPDX-License-Identifier: Apache-2.0
#include "check/document.h"

#include "check/references.h"

namespace tarnmf::check {

NodeId Document::Root() const {
  if (nodes.empty()) return kNoNode;
  for (const NodeId child : ChildrenOf(kDocumentNode)) {
    if (nodes[child].kind == NodeKind::kElement) return child;
  }
  return kNoNode;
}

std::string Document::TextOf(NodeId node) const {
  const std::string_view raw = source->Text(nodes[node].content);
  return nodes[node].kind == NodeKind::kCData ? ResolveCData(raw, version)
                                              : ResolveText(raw, version);
}

}  // namespace tarnmf::check
