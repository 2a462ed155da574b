// Tag tables and the walks that choose handlers from them.
#ifndef XML_DISPATCH_H
#define XML_DISPATCH_H

#include <span>
#include <xercesc/dom/DOMNode.hpp>

#include "platform/errors.h"

namespace tarnmf {

using xercesc::DOMNode;

// One name that a table admits, in lower-case ASCII, and what reads it. A table is used with
// readers of one class only; the names in it are unique.
struct MfTagEntryT {
  const char* name;
  BtkErrorT (*handler)(void* reader, DOMNode* node);
};
using MfTagTableT = std::span<const MfTagEntryT>;

// Turns a function of a certain reader into a table's handler.
template <class Reader, BtkErrorT (*Read)(Reader&, DOMNode&)>
BtkErrorT Element(void* reader, DOMNode* node) {
  return Read(*static_cast<Reader*>(reader), *node);
}

// The value of an attribute. The XML library casts dynamically each time it is asked for one, so
// the text node that almost every attribute consists of is asked instead.
inline const XMLCh* AttributeText(const DOMNode& attribute) {
  const DOMNode* const text = attribute.getFirstChild();
  const bool isWhole = text != nullptr && text->getNextSibling() == nullptr;
  return isWhole ? text->getNodeValue() : attribute.getNodeValue();
}

// Looks the node's name up, whatever its letter case, and calls its handler. 42 for a name that the
// table does not have.
BtkErrorT DispatchNode(DOMNode& node, void* reader, MfTagTableT table);

// Dispatches the child elements in document order up to the first failure. Text and comments are
// passed over; any other node is 42.
BtkErrorT DispatchChildren(DOMNode& element, void* reader, MfTagTableT table);

// The attribute forms of elements. Attributes are dispatched in the order of the XML library's map
// up to the first failure.
BtkErrorT DispatchAttributes(DOMNode& element, void* reader, MfTagTableT table);  // none: 1
BtkErrorT DispatchOptionalAttributes(DOMNode& element, void* reader, MfTagTableT table);
BtkErrorT RefuseAttributes(DOMNode& element);  // any: 42

}  // namespace tarnmf

#endif  // XML_DISPATCH_H
