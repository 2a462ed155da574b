// SPDX-License-Identifier: Apache-2.0
// What stands at a place of a manifest, half-typed ones included.
#ifndef TOOLS_TARNMF_LSP_CURSOR_H
#define TOOLS_TARNMF_LSP_CURSOR_H

#include <cstddef>

#include "check/manifest.h"
#include "grammar/grammar.h"

namespace tool::lsp {

struct Cursor {
  enum class Where {
    kNowhere,  // in a comment, a CDATA section, an instruction, the XML declaration or the doctype
    kContent,  // between tags
    kElementName,    // after "<"
    kEndTagName,     // after "</"
    kAttributeName,  // in a start tag, in a name or where one may begin
    kValue,          // in an attribute's value
  };

  Where where = Where::kNowhere;
  // What is written of the name, of the value between its quotes, or of the word in a content; an
  // empty span at the place when nothing is. A value that lacks its closing quote ends with the word
  // at the place.
  tarnmf::check::Span word;
  // The element of the start tag; kNoNode when nothing of its name is there yet. For an end tag and in
  // a content the innermost element that is open there, kDocumentNode outside the root.
  tarnmf::check::NodeId node = tarnmf::check::kNoNode;
  // The element in which that stands.
  tarnmf::check::NodeId parent = tarnmf::check::kNoNode;
  const tarnmf::check::Attribute* attribute = nullptr;  // of a name or value that is there
  // As the grammar knows them where they stand; null: it does not.
  const tarnmf::grammar::ElementT* element = nullptr;        // of `node`
  const tarnmf::grammar::ElementT* parentElement = nullptr;  // of `parent`
  const tarnmf::grammar::AttributeT* described = nullptr;    // of `attribute`
};

// The offset is one of the manifest's text; the end of it is a place, too.
Cursor CursorAt(const tarnmf::check::Manifest& manifest, std::size_t offset);

// Whether the start tag of an element has its ">". What follows one that has not stands in the element
// as long as that is half typed.
bool HasWholeStartTag(const tarnmf::check::Document& document, tarnmf::check::NodeId element);

// The element as the grammar knows it where it stands; null when it does not. Of the document node
// grammar::kDocument.
const tarnmf::grammar::ElementT* DescribedAt(const tarnmf::check::Document& document,
                                             tarnmf::check::NodeId node);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_CURSOR_H
