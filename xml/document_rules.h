// What all elements at document level share: the rule of single and list elements.
#ifndef XML_DOCUMENT_RULES_H
#define XML_DOCUMENT_RULES_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

// A second element of one kind is admitted only once a list element of that kind has been seen;
// else 261.
template <class DocumentReader>
BtkErrorT AdmitOneMore(const DocumentReader& reader) {
  const bool refused = (reader.flags & (kReadOne | kListSeen)) == kReadOne;
  return refused ? kBtkDuplicate : kBtkOk;
}

// Reads a list element: no attributes, and only elements of its kind below.
template <class DocumentReader>
BtkErrorT ReadListElement(DocumentReader& reader, DOMNode& element, MfTagTableT items) {
  if (BtkErrorT e = RefuseAttributes(element)) return e;
  reader.flags |= kListSeen;
  return DispatchChildren(element, &reader, items);
}

}  // namespace tarnmf

#endif  // XML_DOCUMENT_RULES_H
