// SPDX-License-Identifier: Apache-2.0
#include "check/surroundings.h"

#include <algorithm>

#include "check/characters.h"

namespace tarnmf::check {

Surroundings::Surroundings(const Document& all, std::size_t at)
    : document(all),
      text(all.source->Text()),
      offset(std::min(at, text.size())),
      node(NodeAt(offset)) {}

NodeId Surroundings::NodeAt(std::size_t at) const {
  const auto next =
      std::upper_bound(document.nodes.begin() + 1, document.nodes.end(), at,
                       [](std::size_t place, const Node& each) { return place < each.span.begin; });
  return static_cast<NodeId>(next - document.nodes.begin() - 1);
}

// One that something other than its end tag closes at the offset is open, too.
bool Surroundings::IsOpen(const Node& element) const {
  if (element.kind != NodeKind::kElement || element.startTag.end > offset) return false;
  if (element.span == element.startTag && IsAt(element.startTag.end - 2, "/>")) return false;
  return element.span.end > offset || (element.span.end == offset && element.content.end == offset);
}

const Node* Surroundings::OpenElement() const {
  NodeId id = offset > 0 ? NodeAt(offset - 1) : kDocumentNode;
  while (id != kDocumentNode && !IsOpen(document[id]))
    id = document[id].parent;
  return id != kDocumentNode ? &document[id] : nullptr;
}

NodeId Surroundings::ElementBefore() const {
  NodeId id = offset > 0 ? NodeAt(offset - 1) : kDocumentNode;
  while (id != kDocumentNode && document[id].kind != NodeKind::kElement)
    --id;
  return id != kDocumentNode ? id : kNoNode;
}

const Node* Surroundings::RootBefore() const {
  const NodeId root = document.Root();
  return root != kNoNode && document[root].span.begin < offset ? &document[root] : nullptr;
}

Span Surroundings::NameAt(std::size_t begin) const {
  begin = std::min(begin, text.size());
  std::size_t end = begin;
  while (end < text.size() && IsOfName(text[end]))
    ++end;
  return {begin, end};
}

Span Surroundings::ReferenceAt(std::size_t begin) const {
  std::size_t end = std::min(begin + 1, text.size());
  while (end < text.size() && (IsOfName(text[end]) || text[end] == '#'))
    ++end;
  if (end < text.size() && text[end] == ';') ++end;
  return {begin, end};
}

Span Surroundings::CharacterAt(std::size_t begin) const {
  std::size_t end = std::min(begin + 1, text.size());
  while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
    ++end;
  return {begin, end};
}

Span Surroundings::LineFrom(std::size_t begin) const {
  return {begin, std::min(text.find_first_of("<\r\n", begin + 1), text.size())};
}

Related Surroundings::Beginning(const Node& element) const {
  return {{document.source, element.startTag}, fmt::format("<{}> begins here", NameOf(element))};
}

}  // namespace tarnmf::check
