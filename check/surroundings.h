// SPDX-License-Identifier: Apache-2.0
// What stands where a document is not well-formed.
#ifndef CHECK_SURROUNDINGS_H
#define CHECK_SURROUNDINGS_H

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/document.h"
#include "check/finding.h"

namespace tarnmf::check {

struct Fault {
  Span span;
  std::string message;
  std::vector<Related> related;
};

class Surroundings {
 public:
  Surroundings(const Document& document, std::size_t offset);

  const Document& document;
  const std::string_view text;
  const std::size_t offset;
  const NodeId node;  // the last one that begins there or before

  bool IsWithin(Span span) const { return offset >= span.begin && offset < span.end; }
  bool IsAt(std::size_t at, std::string_view what) const {
    return text.substr(std::min(at, text.size()), what.size()) == what;
  }
  bool IsAt(std::string_view what) const { return IsAt(offset, what); }

  // The innermost element that is open before the offset; null when none is.
  const Node* OpenElement() const;
  // The last element that begins before the offset; kNoNode when none does.
  NodeId ElementBefore() const;
  // Null when it does not begin before the offset.
  const Node* RootBefore() const;

  std::string_view NameOf(const Node& each) const { return document.source->Text(each.name); }
  std::size_t LineOf(const Node& each) const { return document.source->At(each.span.begin).line; }

  Span NameAt(std::size_t begin) const;
  // "&name;", or as much of it as is there.
  Span ReferenceAt(std::size_t begin) const;
  Span CharacterAt(std::size_t begin) const;
  // To the end of the line, or to the next tag.
  Span LineFrom(std::size_t begin) const;

  // A fault whose message tells the text of the span.
  Fault Tell(Span span, fmt::format_string<std::string_view> message) const {
    return {span, fmt::format(message, document.source->Text(span)), {}};
  }
  Related Beginning(const Node& element) const;

 private:
  NodeId NodeAt(std::size_t at) const;
  bool IsOpen(const Node& element) const;
};

// Whether the start tag of an element, or a value in it, has no end of its own.
bool IsUnfinishedTag(const Surroundings& here, NodeId element);
// In the start tag of the element, or where that breaks off.
Fault ExplainStartTag(const Surroundings& here, NodeId element);
Fault ExplainEndTag(const Surroundings& here);
Fault ExplainAttributeTwice(const Surroundings& here);
// Of a tag with which the text ends, which is that of `node`.
Fault ExplainUnfinishedTag(const Surroundings& here);

// In a reference that is no right one; nothing when there is none.
std::optional<Fault> ExplainReference(const Surroundings& here);
// In a text or a value.
Fault ExplainText(const Surroundings& here);

}  // namespace tarnmf::check

#endif  // CHECK_SURROUNDINGS_H
