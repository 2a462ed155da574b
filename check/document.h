// SPDX-License-Identifier: Apache-2.0
// A manifest document with the place of everything in it, as far as it can be made out: texts that
// are no well-formed XML, or only half typed, have one, too.
#ifndef CHECK_DOCUMENT_H
#define CHECK_DOCUMENT_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "check/references.h"
#include "check/source.h"

namespace tarnmf::check {

enum class NodeKind : std::uint8_t {
  kDocument,  // the node 0, which holds everything else
  kElement,
  kText,  // character references and the predefined entities are part of it
  kCData,
  kComment,
  kInstruction,
  kEntity,  // a reference to an entity of the document's own; what it holds is not looked into
};

struct Attribute {
  Span name;
  Span value;           // between the quotes
  std::string text;     // the value as readers receive it: references resolved, blanks normalised
  bool isKnown = true;  // false: an entity in it has no known text
  bool isDefault = false;  // the document type gives it; its places are in there
};

using NodeId = std::uint32_t;
inline constexpr NodeId kNoNode = UINT32_MAX;
inline constexpr NodeId kDocumentNode = 0;

struct Node {
  NodeKind kind = NodeKind::kDocument;
  Span span;      // all of it: of an element from its start tag to its end tag
  Span name;      // of an element, an instruction or an entity
  Span startTag;  // of an element; for an empty one all of it
  Span content;   // of an element: between its tags; of the others what they enclose
  NodeId parent = kNoNode;
  NodeId firstChild = kNoNode;
  NodeId next = kNoNode;  // the next one of the same parent
  std::uint32_t firstAttribute = 0;
  std::uint32_t attributeCount = 0;
};

class Document {
 public:
  std::vector<Node> nodes;            // in the order in which they begin
  std::vector<Attribute> attributes;  // of one element after the other

  Span declaration;  // of XML itself, at the very beginning; empty: there is none
  Span doctype;      // the document type declaration; empty: there is none
  XmlVersion version = XmlVersion::k10;

  const Node& operator[](NodeId node) const { return nodes[node]; }
  // Kept by the one who owns both.
  const Source* source = nullptr;

  std::string_view Name(NodeId node) const { return source->Text(nodes[node].name); }
  std::string_view Name(const Attribute& attribute) const { return source->Text(attribute.name); }

  // The attributes of an element in the order in which they are written.
  struct AttributeRange {
    const Attribute* first;
    const Attribute* last;
    const Attribute* begin() const { return first; }
    const Attribute* end() const { return last; }
    bool empty() const { return first == last; }
  };
  AttributeRange AttributesOf(NodeId node) const {
    const Attribute* const first = attributes.data() + nodes[node].firstAttribute;
    return {first, first + nodes[node].attributeCount};
  }

  // The root element; kNoNode when there is none.
  NodeId Root() const;
  // The text of a text node or CDATA section as readers receive it.
  std::string TextOf(NodeId node) const;

  // The nodes of one parent: for (NodeId child : document.ChildrenOf(node)).
  class ChildRange {
   public:
    class Iterator {
     public:
      Iterator(const Document& document, NodeId node) : document_(&document), node_(node) {}
      NodeId operator*() const { return node_; }
      Iterator& operator++() {
        node_ = document_->nodes[node_].next;
        return *this;
      }
      bool operator==(const Iterator& other) const { return node_ == other.node_; }

     private:
      const Document* document_;
      NodeId node_;
    };
    ChildRange(const Document& document, NodeId parent) : document_(document), parent_(parent) {}
    Iterator begin() const { return {document_, document_.nodes[parent_].firstChild}; }
    Iterator end() const { return {document_, kNoNode}; }

   private:
    const Document& document_;
    NodeId parent_;
  };
  ChildRange ChildrenOf(NodeId node) const { return {*this, node}; }
};

}  // namespace tarnmf::check

#endif  // CHECK_DOCUMENT_H
