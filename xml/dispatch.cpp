// SPDX-License-Identifier: Apache-2.0
#include "xml/dispatch.h"

#include <algorithm>
#include <cstring>

#include "platform/text.h"
#include "support/owned.h"

namespace tarnmf {
namespace {

template <class Rows>
const typename Rows::element_type* FindRow(const char* name, Rows rows) {
  const auto row = std::find_if(rows.begin(), rows.end(), [name](const auto& candidate) {
    return std::strcmp(candidate.name, name) == 0;
  });
  return row != rows.end() ? &*row : nullptr;
}

// Calls `handle` with the row of the name. A name that has not been folded already is folded by the
// platform, which may know more letters than those of ASCII, and may refuse the name.
template <class Rows, class Handle>
BtkErrorT Dispatch(const NodeName& name, Rows rows, Handle handle) {
  Utf8Text lower;
  if (name.folded == nullptr) {
    Utf8Text utf8;
    if (BtkErrorT e = btkStrUtf16ToUtf8Alloc(Out(utf8), nullptr, name.written, kBtkWholeText)) {
      return e;
    }
    if (BtkErrorT e = btkStrUtf8ToLowerAlloc(Out(lower), nullptr, utf8.get(), kBtkWholeText)) {
      return e;
    }
  }
  const auto* const row = FindRow(name.folded != nullptr ? name.folded : lower.get(), rows);
  return row != nullptr ? handle(*row) : kBtkUnexpected;
}

}  // namespace

BtkErrorT DispatchElement(const Element& element, void* reader, ElementRows rows) {
  return Dispatch(element.name, rows,
                  [&](const MfTagEntryT& row) { return row.handler(reader, element); });
}

BtkErrorT DispatchChildren(const Element& element, void* reader, ElementRows rows) {
  for (const Node* child = element.firstChild; child != nullptr; child = child->nextSibling) {
    switch (child->kind) {
      case NodeKind::kText:
      case NodeKind::kComment:
        break;
      case NodeKind::kElement:
        if (BtkErrorT e = DispatchElement(AsElement(*child), reader, rows)) return e;
        break;
      default:
        return kBtkUnexpected;
    }
  }
  return kBtkOk;
}

BtkErrorT DispatchAttributes(const Element& element, void* reader, AttributeRows rows) {
  for (const Attribute& attribute : element.attributes) {
    if (BtkErrorT e = Dispatch(attribute.name, rows, [&](const AttributeEntry& row) {
          return row.handler(reader, attribute.value);
        })) {
      return e;
    }
  }
  return kBtkOk;
}

}  // namespace tarnmf
