// SPDX-License-Identifier: Apache-2.0
// Tag tables and the walks that choose handlers from them.
#ifndef XML_DISPATCH_H
#define XML_DISPATCH_H

#include <span>

#include "platform/errors.h"
#include "xml/tree.h"

namespace tarnmf {

// One name that a table admits, in lower-case ASCII, and what reads it: a child element, or the text
// of an attribute.
struct MfTagEntryT {
  const char* name;
  BtkErrorT (*handler)(void* reader, const Element& element);
};
struct AttributeEntry {
  const char* name;
  BtkErrorT (*handler)(void* reader, const btkWChar* text);
};
using ElementRows = std::span<const MfTagEntryT>;
using AttributeRows = std::span<const AttributeEntry>;

// The child elements and the attributes that an element admits. The handlers of a table take the
// reader that it is for and no other one; rows.h makes tables from the grammar.
template <class Reader>
struct ElementTable {
  ElementRows rows;
};
template <class Reader>
struct AttributeTable {
  AttributeRows rows;
};

// The walks themselves, which do not know the reader.
BtkErrorT DispatchElement(const Element& element, void* reader, ElementRows rows);
BtkErrorT DispatchChildren(const Element& element, void* reader, ElementRows rows);
BtkErrorT DispatchAttributes(const Element& element, void* reader, AttributeRows rows);

// Looks the element's name up, whatever its letter case, and calls its handler. kBtkUnexpected for a
// name that the table does not have.
template <class Reader>
BtkErrorT DispatchElement(const Element& element, Reader& reader,
                          const ElementTable<Reader>& table) {
  return DispatchElement(element, &reader, table.rows);
}

// Dispatches the child elements in document order up to the first failure. Text and comments are
// passed over; any other node is kBtkUnexpected.
template <class Reader>
BtkErrorT DispatchChildren(const Element& element, Reader& reader,
                           const ElementTable<Reader>& table) {
  return DispatchChildren(element, &reader, table.rows);
}

// Dispatches the attributes in the order of their names as written up to the first failure.
// kBtkMissing when there is none.
template <class Reader>
BtkErrorT DispatchAttributes(const Element& element, Reader& reader,
                             const AttributeTable<Reader>& table) {
  return element.attributes.empty() ? kBtkMissing
                                    : DispatchAttributes(element, &reader, table.rows);
}

// The same where an element may have no attributes, and where it must have none (kBtkUnexpected).
template <class Reader>
BtkErrorT DispatchOptionalAttributes(const Element& element, Reader& reader,
                                     const AttributeTable<Reader>& table) {
  return DispatchAttributes(element, &reader, table.rows);
}
inline BtkErrorT RefuseAttributes(const Element& element) {
  return element.attributes.empty() ? kBtkOk : kBtkUnexpected;
}

}  // namespace tarnmf

#endif  // XML_DISPATCH_H
