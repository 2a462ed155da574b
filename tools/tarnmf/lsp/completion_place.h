// SPDX-License-Identifier: Apache-2.0
// The place at which something is completed, and what is offered there by its kind.
#ifndef TOOLS_TARNMF_LSP_COMPLETION_PLACE_H
#define TOOLS_TARNMF_LSP_COMPLETION_PLACE_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "check/manifest.h"
#include "tools/tarnmf/lsp/completion.h"
#include "tools/tarnmf/lsp/cursor.h"

namespace tool::lsp {

struct CompletionPlace {
  const tarnmf::check::Manifest& manifest;
  const Cursor cursor;
  const std::size_t offset;
  const std::vector<Occurrence>& names;
  const std::size_t loadpoint;
  const bool asSnippets;

  const tarnmf::check::Document& Document() const { return manifest.document; }
  // Behind the word; NUL at the text's end.
  char NextCharacter() const { return manifest.source.Text().c_str()[cursor.word.end]; }
  std::string_view TextBehindWord() const {
    return std::string_view(manifest.source.Text()).substr(cursor.word.end);
  }
};

// In a content, or behind a "<".
std::vector<CompletionItem> CompleteElement(const CompletionPlace& place);
std::vector<CompletionItem> CompleteEndTag(const CompletionPlace& place);
// REQUIRES: the grammar knows the element.
std::vector<CompletionItem> CompleteAttribute(const CompletionPlace& place);
// REQUIRES: the grammar knows the attribute.
std::vector<CompletionItem> CompleteValue(const CompletionPlace& place);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_COMPLETION_PLACE_H
