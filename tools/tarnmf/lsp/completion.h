// SPDX-License-Identifier: Apache-2.0
// What can be written at a place of a manifest.
#ifndef TOOLS_TARNMF_LSP_COMPLETION_H
#define TOOLS_TARNMF_LSP_COMPLETION_H

#include <cstddef>
#include <string>
#include <vector>

#include "check/manifest.h"
#include "tools/tarnmf/lsp/names.h"

namespace tool::lsp {

struct CompletionItem {
  enum class Kind { kElement, kAttribute, kWord, kName, kEndTag };
  Kind kind = Kind::kWord;
  std::string label;
  std::string detail;         // a few words beside the label; may be empty
  std::string documentation;  // plain text; may be empty
  tarnmf::check::Span replaced;
  std::string newText;  // a snippet, if those were asked for, else plain text
  std::string filter;   // what is compared with the text of `replaced`
};

// In the order in which they are to be shown. The names are those of the manifest's process;
// `loadpoint` is the number of its load point. Snippets are in the syntax of the protocol.
std::vector<CompletionItem> Complete(const tarnmf::check::Manifest& manifest, std::size_t offset,
                                     const std::vector<Occurrence>& names, std::size_t loadpoint,
                                     bool asSnippets);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_COMPLETION_H
