// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/text_document.h"

#include <algorithm>
#include <utility>

namespace tool::lsp {

TextDocument::TextDocument(std::string text) : text_(std::move(text)), lines_{0} {
  FindLines(0);
}

void TextDocument::FindLines(std::size_t line) {
  lines_.resize(line + 1);
  for (std::size_t at = lines_.back(); (at = text_.find_first_of("\r\n", at)) != text_.npos;) {
    const bool isPair = text_[at] == '\r' && at + 1 < text_.size() && text_[at + 1] == '\n';
    at += isPair ? 2 : 1;
    lines_.push_back(at);
  }
}

std::size_t TextDocument::OffsetAt(Position position, PositionEncoding encoding) const {
  if (position.line >= lines_.size()) return text_.size();
  const std::size_t begin = lines_[position.line];
  std::size_t end = position.line + 1 < lines_.size() ? lines_[position.line + 1] : text_.size();
  while (end > begin && (text_[end - 1] == '\r' || text_[end - 1] == '\n'))
    --end;
  const std::string_view line = std::string_view(text_).substr(begin, end - begin);
  return begin + ByteAfter(line, position.character, encoding);
}

void TextDocument::Replace(Range range, std::string_view replacement, PositionEncoding encoding) {
  const auto [begin, end] =
      std::minmax({OffsetAt(range.start, encoding), OffsetAt(range.end, encoding)});
  text_.replace(begin, end - begin, replacement);
  // The line before is looked at again, too: its end may have become half of a longer one.
  const auto next = std::upper_bound(lines_.begin(), lines_.end(), begin);
  const auto line = static_cast<std::size_t>(next - lines_.begin()) - 1;
  FindLines(line > 0 ? line - 1 : 0);
}

}  // namespace tool::lsp
