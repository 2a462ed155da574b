// SPDX-License-Identifier: Apache-2.0
// The text of a document while it is edited.
#ifndef TOOLS_TARNMF_LSP_TEXT_DOCUMENT_H
#define TOOLS_TARNMF_LSP_TEXT_DOCUMENT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/tarnmf/lsp/positions.h"

namespace tool::lsp {

class TextDocument {
 public:
  explicit TextDocument(std::string text);

  const std::string& Text() const { return text_; }

  // A place past the end of a line is the line's end, one past the last line the text's.
  std::size_t OffsetAt(Position position, PositionEncoding encoding) const;

  // The ends of a range that is written the wrong way round are exchanged.
  void Replace(Range range, std::string_view replacement, PositionEncoding encoding);

 private:
  // From a line on, up to the end.
  void FindLines(std::size_t line);

  std::string text_;
  std::vector<std::size_t> lines_;  // where each begins
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_TEXT_DOCUMENT_H
