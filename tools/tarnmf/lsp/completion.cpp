// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/completion.h"

#include "tools/tarnmf/lsp/completion_place.h"

namespace tool::lsp {

std::vector<CompletionItem> Complete(const tarnmf::check::Manifest& manifest, std::size_t offset,
                                     const std::vector<Occurrence>& names, std::size_t loadpoint,
                                     bool asSnippets) {
  const CompletionPlace place = {manifest,  CursorAt(manifest, offset), offset, names, loadpoint,
                                 asSnippets};
  switch (place.cursor.where) {
    case Cursor::Where::kContent:
    case Cursor::Where::kElementName:
      return CompleteElement(place);
    case Cursor::Where::kEndTagName:
      return CompleteEndTag(place);
    case Cursor::Where::kAttributeName:
      if (place.cursor.element != nullptr) return CompleteAttribute(place);
      break;
    case Cursor::Where::kValue:
      if (place.cursor.described != nullptr) return CompleteValue(place);
      break;
    case Cursor::Where::kNowhere:
      break;
  }
  return {};
}

}  // namespace tool::lsp
