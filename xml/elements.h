// SPDX-License-Identifier: Apache-2.0
// The elements of manifest documents, where they are met by the readers of the elements around them.
#ifndef XML_ELEMENTS_H
#define XML_ELEMENTS_H

#include "xml/dispatch.h"
#include "xml/readers.h"

namespace tarnmf {

// The four roots.
extern const ElementTable<liMfReader> kRoots;

// What stands below the root: single elements and lists of one kind.
extern const ElementTable<liMfReader::ModuleMfReader> kDocumentModules;
extern const ElementTable<liMfReader::ClassMfReader> kDocumentClasses;
extern const ElementTable<liMfReader::RunnableMfReader> kDocumentRunnables;

// A list element: no attributes, and only elements of its kind below.
template <class DocumentReader>
BtkErrorT ReadListElement(DocumentReader& reader, const Element& element,
                          const ElementTable<DocumentReader>& items) {
  if (BtkErrorT e = RefuseAttributes(element)) return e;
  reader.flags |= kListSeen;
  return DispatchChildren(element, reader, items);
}

// A "module" element that stands anywhere: the module with its implementations is appended to
// `reader.modules`.
BtkErrorT ReadModule(liMfReader::ModuleReader& reader, const Element& element);

// The sides of a class; each fills its part of `reader.current`.
BtkErrorT ReadClientSide(liMfReader::ClassReader& reader, const Element& element);
BtkErrorT ReadServiceSide(liMfReader::ClassReader& reader, const Element& element);
BtkErrorT ReadAgentSide(liMfReader::ClassReader& reader, const Element& element);

// The roles of a runnable; each is appended to its list in `reader.runnable`.
BtkErrorT ReadServiceRole(liMfReader::RunnableReader& reader, const Element& element);
BtkErrorT ReadAppRole(liMfReader::RunnableReader& reader, const Element& element);
BtkErrorT ReadLauncherRole(liMfReader::RunnableReader& reader, const Element& element);

// What a role holds: they fill `reader.role`, and a later element of one kind takes the place of an
// earlier one.
BtkErrorT ReadArgs(liMfReader::RunnableReader& reader, const Element& element);
BtkErrorT ReadEnv(liMfReader::RunnableReader& reader, const Element& element);

}  // namespace tarnmf

#endif  // XML_ELEMENTS_H
