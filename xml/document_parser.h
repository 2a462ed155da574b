// SPDX-License-Identifier: Apache-2.0
// The XML library's parser with a tree of our own.
#ifndef XML_DOCUMENT_PARSER_H
#define XML_DOCUMENT_PARSER_H

#include <xercesc/parsers/XercesDOMParser.hpp>

#include "xml/arena.h"
#include "xml/name_cache.h"
#include "xml/tree.h"

namespace tarnmf {

// Most of the time of a DOM parse goes into nodes that are thrown away at once. So the events of a
// document's content make a small tree here, and the XML library's own document never sees them.
// Everything else is the base class's: the start of the document, its XML declaration and all that
// its doctype says, so that what the XML library refuses there is refused there.
//
// The tree is what the XML library would have built, the odd shapes of broken documents included,
// as far as readers can tell. No error handler is installed: after a fatal error `parse` returns,
// and what came before it is the document.
//
// An object parses one document.
class DocumentParser final : public xercesc::XercesDOMParser {
 public:
  DocumentParser();

  // Whether the XML library came so far as to have a document.
  bool HasDocument() { return getDocument() != nullptr; }

  // The root element; null when there is none.
  const Element* Root() const;

 private:
  void startElement(const xercesc::XMLElementDecl& declaration, unsigned int urlId,
                    const XMLCh* prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    XMLSize_t count, bool isEmpty, bool isRoot) override;
  void endElement(const xercesc::XMLElementDecl& declaration, unsigned int urlId, bool isRoot,
                  const XMLCh* prefix) override;
  void docCharacters(const XMLCh* text, XMLSize_t length, bool isCData) override;
  void ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCData) override;
  void docComment(const XMLCh* text) override;
  void docPI(const XMLCh* target, const XMLCh* data) override;
  void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
  void endEntityReference(const xercesc::XMLEntityDecl& entity) override;

  template <class NodeType>
  NodeType* Append(NodeKind kind);
  void AppendText(const XMLCh* text, XMLSize_t length);
  std::span<const Attribute> CopyAttributes(
      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t count);
  void CloseParent();

  Arena arena_;
  NameCache names_{arena_};
  ParentNode document_{};
  ParentNode* parent_ = &document_;  // takes the next node
  Node* current_ = &document_;       // came last
  bool withinElement_ = false;
};

}  // namespace tarnmf

#endif  // XML_DOCUMENT_PARSER_H
