// SPDX-License-Identifier: Apache-2.0
// A document as the readers walk it: a small tree of nodes, which lives as long as the parser that
// has made it.
#ifndef XML_TREE_H
#define XML_TREE_H

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/types.h"

namespace tarnmf {

// A name as it is compared: in lower-case ASCII where it has nothing but ASCII and is short enough
// to be known at all; else as it was written.
struct NodeName {
  const char* folded;       // null: see `written`
  const btkWChar* written;  // null: see `folded`
};

struct Attribute {
  NodeName name;
  const btkWChar* value;
};

enum class NodeKind : std::uint8_t {
  kDocument,
  kElement,
  kText,
  kCData,
  kComment,
  kInstruction,
  kEntityReference,
};

struct ParentNode;

struct Node {
  NodeKind kind;
  ParentNode* parent;
  Node* nextSibling;
};

struct TextNode : Node {
  btkWChar* text;  // with a NUL after it
  std::size_t length;
  std::size_t capacity;  // units without the NUL that there is room for
};

// An element; the document, which holds the root; or an entity reference, which holds what the
// entity stands for. Only elements have names and attributes.
struct ParentNode : Node {
  Node* firstChild;
  NodeName name;
  std::span<const Attribute> attributes;  // by name as written, in code units
};
using Element = ParentNode;

// REQUIRES: the node is of the kind.
inline const Element& AsElement(const Node& node) {
  assert(node.kind == NodeKind::kElement);
  return static_cast<const Element&>(node);
}
// The first element among the children, or null.
inline const Element* FirstElement(const ParentNode& parent) {
  for (const Node* child = parent.firstChild; child != nullptr; child = child->nextSibling) {
    if (child->kind == NodeKind::kElement) return &AsElement(*child);
  }
  return nullptr;
}
// REQUIRES: the node is a text.
inline const btkWChar* TextOf(const Node& node) {
  assert(node.kind == NodeKind::kText);
  return static_cast<const TextNode&>(node).text;
}

}  // namespace tarnmf

#endif  // XML_TREE_H
