// SPDX-License-Identifier: Apache-2.0
#include "xml/document_parser.h"

#include <algorithm>
#include <type_traits>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>

namespace tarnmf {
namespace {

static_assert(std::is_same_v<XMLCh, btkWChar>, "texts are taken over without conversion");

// An attribute in the XML library's words, which last for one event.
struct GivenAttribute {
  const XMLCh* name;
  const XMLCh* value;

  // The order of the DOM's map: by code unit.
  bool operator<(const GivenAttribute& other) const {
    const XMLCh* left = name;
    const XMLCh* right = other.name;
    while (*left != 0 && *left == *right) {
      ++left;
      ++right;
    }
    return *left < *right;
  }
};

}  // namespace

DocumentParser::DocumentParser()
    : XercesDOMParser(nullptr, xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) {}

const Element* DocumentParser::Root() const {
  return FirstElement(document_);
}

// ---- Making nodes ------------------------------------------------------------------------------

template <class NodeType>
NodeType* DocumentParser::Append(NodeKind kind) {
  auto* const node = new (arena_.Allocate(sizeof(NodeType))) NodeType{};
  node->kind = kind;
  node->parent = parent_;
  Node** place = current_ == parent_ ? &parent_->firstChild : &current_->nextSibling;
  // The place is free, unless more elements have ended than began.
  while (*place != nullptr)
    place = &(*place)->nextSibling;
  *place = node;
  current_ = node;
  return node;
}

// Text joins the text that it follows.
void DocumentParser::AppendText(const XMLCh* text, XMLSize_t length) {
  auto* const node = current_->kind == NodeKind::kText ? static_cast<TextNode*>(current_)
                                                       : Append<TextNode>(NodeKind::kText);
  const std::size_t whole = node->length + length;
  if (node->text == nullptr || whole > node->capacity) {
    const std::size_t capacity = std::max(whole, 2 * node->capacity);
    auto* const room = arena_.AllocateArray<btkWChar>(capacity + 1);
    std::copy_n(node->text, node->length, room);
    node->text = room;
    node->capacity = capacity;
  }
  std::copy_n(text, length, node->text + node->length);
  node->text[whole] = 0;
  node->length = whole;
}

// Attributes that a declaration has given by default are among them.
std::span<const Attribute> DocumentParser::CopyAttributes(
    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count) {
  GivenAttribute few[16];
  GivenAttribute* const given =
      count <= std::size(few) ? few : arena_.AllocateArray<GivenAttribute>(count);
  for (XMLSize_t i = 0; i < count; ++i)
    given[i] = {attributes.elementAt(i)->getName(), attributes.elementAt(i)->getValue()};
  std::sort(given, given + count);

  auto* const copies = arena_.AllocateArray<Attribute>(count);
  for (XMLSize_t i = 0; i < count; ++i)
    copies[i] = {names_.Get(given[i].name), arena_.CopyText(given[i].value)};
  return {copies, count};
}

// ---- Events ------------------------------------------------------------------------------------

void DocumentParser::startElement(const xercesc::XMLElementDecl& declaration, unsigned int,
                                  const XMLCh*,
                                  const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                  XMLSize_t count, bool isEmpty, bool) {
  auto* const element = Append<Element>(NodeKind::kElement);
  element->name = names_.Get(declaration.getFullName());
  element->attributes = CopyAttributes(attributes, count);
  parent_ = element;
  withinElement_ = true;
  // The XML library tells no end of an empty element.
  if (isEmpty) CloseParent();
}

void DocumentParser::endElement(const xercesc::XMLElementDecl&, unsigned int, bool, const XMLCh*) {
  CloseParent();
}

// A broken document may close more than it has opened. The DOM then goes on in the root element.
void DocumentParser::CloseParent() {
  current_ = parent_;
  parent_ = current_->parent;
  if (parent_ == nullptr) {
    parent_ = const_cast<Element*>(Root());
    current_ = parent_;
  }
  if (parent_ == &document_) withinElement_ = false;
}

void DocumentParser::docCharacters(const XMLCh* text, XMLSize_t length, bool isCData) {
  if (!withinElement_) return;
  if (isCData) {
    Append<Node>(NodeKind::kCData);
  } else {
    AppendText(text, length);
  }
}

void DocumentParser::ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool) {
  if (withinElement_) AppendText(text, length);
}

void DocumentParser::docComment(const XMLCh*) {
  Append<Node>(NodeKind::kComment);
}

// The base class keeps the instruction as well: it refuses odd targets.
void DocumentParser::docPI(const XMLCh* target, const XMLCh* data) {
  XercesDOMParser::docPI(target, data);
  Append<Node>(NodeKind::kInstruction);
}

void DocumentParser::startEntityReference(const xercesc::XMLEntityDecl&) {
  parent_ = Append<ParentNode>(NodeKind::kEntityReference);
}

void DocumentParser::endEntityReference(const xercesc::XMLEntityDecl&) {
  CloseParent();
}

}  // namespace tarnmf
