#include "xml/dispatch.h"

#include <cstring>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include "platform/text.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

// A node's name as lower-case UTF-8. Names of ASCII characters, so all that a table can hold, are
// folded without a conversion and without an allocation.
class FoldedName {
 public:
  BtkErrorT Read(const XMLCh* name) {
    if (FoldAscii(name)) return kBtkOk;
    Utf8Text utf8;
    if (BtkErrorT e = btkStrUtf16ToUtf8Alloc(Out(utf8), nullptr, name, kBtkWholeText)) return e;
    return btkStrUtf8ToLowerAlloc(Out(allocated_), nullptr, utf8.get(), kBtkWholeText);
  }

  const char* Text() const { return allocated_ ? allocated_.get() : folded_; }

 private:
  bool FoldAscii(const XMLCh* name) {
    for (char& folded : folded_) {
      const XMLCh unit = *name++;
      if (unit >= 0x80) return false;
      folded = static_cast<char>(btkAsciiToLower(unit));
      if (unit == 0) return true;
    }
    return false;
  }

  char folded_[32];
  Utf8Text allocated_;
};

// The XML library walks its whole map to count it, so that is done once.
struct AttributeMap {
  explicit AttributeMap(DOMNode& element)
      : map(element.getAttributes()), count(map != nullptr ? map->getLength() : 0) {}

  BtkErrorT Dispatch(void* reader, TagRows rows) const {
    for (XMLSize_t index = 0; index < count; ++index) {
      DOMNode* attribute = map->item(index);
      if (attribute == nullptr) return kBtkUnexpected;
      if (BtkErrorT e = DispatchNode(*attribute, reader, rows)) return e;
    }
    return kBtkOk;
  }

  const xercesc::DOMNamedNodeMap* map;
  XMLSize_t count;
};

}  // namespace

BtkErrorT DispatchNode(DOMNode& node, void* reader, TagRows rows) {
  FoldedName name;
  if (BtkErrorT e = name.Read(node.getNodeName())) return e;
  for (const MfTagEntryT& entry : rows) {
    if (std::strcmp(name.Text(), entry.name) == 0) return entry.handler(reader, &node);
  }
  return kBtkUnexpected;
}

BtkErrorT DispatchChildren(DOMNode& element, void* reader, TagRows rows) {
  // By siblings: the XML library counts a child list from its start for every index.
  for (DOMNode* child = element.getFirstChild(); child != nullptr;
       child = child->getNextSibling()) {
    switch (child->getNodeType()) {
      case DOMNode::TEXT_NODE:
      case DOMNode::COMMENT_NODE:
        break;
      case DOMNode::ELEMENT_NODE:
        if (BtkErrorT e = DispatchNode(*child, reader, rows)) return e;
        break;
      default:
        return kBtkUnexpected;
    }
  }
  return kBtkOk;
}

BtkErrorT DispatchAttributes(DOMNode& element, void* reader, TagRows rows) {
  const AttributeMap attributes(element);
  return attributes.count == 0 ? kBtkMissing : attributes.Dispatch(reader, rows);
}

BtkErrorT DispatchOptionalAttributes(DOMNode& element, void* reader, TagRows rows) {
  return AttributeMap(element).Dispatch(reader, rows);
}

BtkErrorT RefuseAttributes(DOMNode& element) {
  return element.hasAttributes() ? kBtkUnexpected : kBtkOk;
}

}  // namespace tarnmf
