// Tag tables and the walks that choose handlers from them.
#ifndef XML_DISPATCH_H
#define XML_DISPATCH_H

#include <span>
#include <xercesc/dom/DOMNode.hpp>

#include "platform/errors.h"

namespace tarnmf {

using xercesc::DOMNode;

// One name that a table admits, in lower-case ASCII, and what reads it.
struct MfTagEntryT {
  const char* name;
  BtkErrorT (*handler)(void* reader, DOMNode* node);
};
using TagRows = std::span<const MfTagEntryT>;

// The attributes and the child elements that an element admits. The handlers of a table take the
// reader that it is for and no other one; rows.h makes tables from the grammar.
template <class Reader>
struct AttributeTable {
  TagRows rows;
};
template <class Reader>
struct ElementTable {
  TagRows rows;
};

// The value of an attribute. The XML library casts dynamically each time it is asked for one, so
// the text node that almost every attribute consists of is asked instead.
inline const XMLCh* AttributeText(const DOMNode& attribute) {
  const DOMNode* const text = attribute.getFirstChild();
  const bool isWhole = text != nullptr && text->getNextSibling() == nullptr;
  return isWhole ? text->getNodeValue() : attribute.getNodeValue();
}

// The walks themselves, which do not know the reader.
BtkErrorT DispatchNode(DOMNode& node, void* reader, TagRows rows);
BtkErrorT DispatchChildren(DOMNode& element, void* reader, TagRows rows);
BtkErrorT DispatchAttributes(DOMNode& element, void* reader, TagRows rows);
BtkErrorT DispatchOptionalAttributes(DOMNode& element, void* reader, TagRows rows);

// Looks the element's name up, whatever its letter case, and calls its handler. kBtkUnexpected for a
// name that the table does not have.
template <class Reader>
BtkErrorT DispatchElement(DOMNode& element, Reader& reader, const ElementTable<Reader>& table) {
  return DispatchNode(element, &reader, table.rows);
}

// Dispatches the child elements in document order up to the first failure. Text and comments are
// passed over; any other node is kBtkUnexpected.
template <class Reader>
BtkErrorT DispatchChildren(DOMNode& element, Reader& reader, const ElementTable<Reader>& table) {
  return DispatchChildren(element, &reader, table.rows);
}

// Dispatches the attributes in the order of the XML library's map up to the first failure.
// kBtkMissing when there is none.
template <class Reader>
BtkErrorT DispatchAttributes(DOMNode& element, Reader& reader,
                             const AttributeTable<Reader>& table) {
  return DispatchAttributes(element, &reader, table.rows);
}

// The same where an element may have no attributes, and where it must have none (kBtkUnexpected).
template <class Reader>
BtkErrorT DispatchOptionalAttributes(DOMNode& element, Reader& reader,
                                     const AttributeTable<Reader>& table) {
  return DispatchOptionalAttributes(element, &reader, table.rows);
}
BtkErrorT RefuseAttributes(DOMNode& element);

}  // namespace tarnmf

#endif  // XML_DISPATCH_H
