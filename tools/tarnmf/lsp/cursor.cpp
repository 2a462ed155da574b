// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/cursor.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "check/characters.h"
#include "check/names.h"
#include "grammar/manifest.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

using Where = Cursor::Where;

bool IsQuote(char c) {
  return c == '"' || c == '\'';
}

class CursorFinder {
 public:
  CursorFinder(const Manifest& manifest, std::size_t offset)
      : document_(manifest.document),
        text_(std::string_view(manifest.source.Text())
                  .substr(0, manifest.document[kDocumentNode].span.end)),
        offset_(offset) {}

  Cursor Find() {
    if (offset_ > text_.size() || IsInProlog()) return {};
    before_ = NodeBefore();
    const Node& node = document_[before_];
    if (node.kind == NodeKind::kElement) {
      if (IsInStartTag(node)) return InStartTag();
    } else if (node.kind != NodeKind::kDocument && node.kind != NodeKind::kText) {
      if (IsInside(node)) return {};
    }
    return BetweenTags();
  }

 private:
  char At(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }

  static Cursor CursorOf(Where where, Span word) {
    Cursor cursor;
    cursor.where = where;
    cursor.word = word;
    return cursor;
  }
  Span Here() const { return {offset_, offset_}; }

  // ---- What stands around the place -------------------------------------------------------------

  // In the declaration of XML, or of the document type.
  bool IsInProlog() const {
    const Span doctype = document_.doctype;
    return offset_ < document_.declaration.end ||
           (offset_ > doctype.begin &&
            (offset_ < doctype.end || (offset_ == doctype.end && text_[offset_ - 1] != '>')));
  }

  // The last one that begins before the place.
  NodeId NodeBefore() const {
    const auto after =
        std::partition_point(document_.nodes.begin() + 1, document_.nodes.end(),
                             [&](const Node& node) { return node.span.begin < offset_; });
    return static_cast<NodeId>(after - document_.nodes.begin() - 1);
  }

  // One that is not ended goes on at its end.
  bool IsInside(const Node& node) const {
    return offset_ < node.span.end ||
           (offset_ == node.span.end && node.content.end == node.span.end);
  }

  bool IsInStartTag(const Node& element) const {
    return offset_ < element.startTag.end ||
           (offset_ == element.startTag.end && text_[offset_ - 1] != '>');
  }

  bool IsOpenAt(const Node& node, std::size_t place) const {
    if (node.kind == NodeKind::kDocument) return true;
    const bool isEmptyTag =
        node.startTag == node.span && text_.substr(0, node.span.end).ends_with("/>");
    return node.kind == NodeKind::kElement && !isEmptyTag && place >= node.content.begin &&
           place <= node.content.end;
  }

  NodeId InnermostAt(std::size_t place) const {
    NodeId node = before_;
    while (!IsOpenAt(document_[node], place))
      node = document_[node].parent;
    return node;
  }

  // The letters of a name on both sides of the place.
  Span Word() const {
    Span word = Here();
    while (word.begin > 0 && IsOfName(text_[word.begin - 1]))
      --word.begin;
    while (IsOfName(At(word.end)))
      ++word.end;
    return word;
  }

  // ---- Between tags, and in those that have no node of their own ----------------------------------

  // What has a node and ends before the place ends with ">", or has no "<" in it.
  Cursor BetweenTags() const {
    const std::string_view before = text_.substr(0, offset_);
    const std::size_t markup = before.rfind('<');
    const bool isInMarkup = markup != before.npos && before.find('>', markup) == before.npos;
    return isInMarkup ? InMarkup(markup) : InContent();
  }

  Cursor InContent() const {
    Cursor cursor = CursorOf(Where::kContent, Word());
    cursor.node = InnermostAt(offset_);
    cursor.parent = document_[cursor.node].parent;
    return cursor;
  }

  // In an end tag, or behind a "<" that begins no tag.
  Cursor InMarkup(std::size_t begin) const {
    const std::string_view typed = text_.substr(begin + 1, offset_ - begin - 1);
    if (typed.empty()) {
      if (At(offset_) == '/') return {};
      Cursor cursor = CursorOf(Where::kElementName, Here());
      cursor.parent = InnermostAt(begin);
      return cursor;
    }
    if (typed[0] == '!' || typed[0] == '?') return {};
    if (typed[0] != '/') return InContent();
    const Span name = Word();
    if (name.begin != begin + 2) return {};
    Cursor cursor = CursorOf(Where::kEndTagName, name);
    cursor.node = InnermostAt(begin);
    cursor.parent = document_[cursor.node].parent;
    return cursor;
  }

  // ---- In a start tag -----------------------------------------------------------------------------

  Cursor InStartTag() const {
    Cursor cursor = WithinStartTag();
    if (cursor.where == Where::kNowhere) return cursor;
    cursor.node = before_;
    cursor.parent = document_[before_].parent;
    return cursor;
  }

  Cursor WithinStartTag() const {
    const Span name = document_[before_].name;
    if (offset_ <= name.end) return CursorOf(Where::kElementName, name);
    for (const Attribute& attribute : document_.AttributesOf(before_)) {
      if (attribute.isDefault || offset_ < attribute.name.begin) continue;
      if (offset_ <= attribute.name.end) {
        return With(attribute, CursorOf(Where::kAttributeName, attribute.name));
      }
      if (offset_ <= attribute.value.end) return BehindName(attribute);
    }
    return IsBlank(text_[offset_ - 1]) ? CursorOf(Where::kAttributeName, Here()) : Cursor();
  }

  static Cursor With(const Attribute& attribute, Cursor cursor) {
    cursor.attribute = &attribute;
    return cursor;
  }

  Cursor BehindName(const Attribute& attribute) const {
    const Span value = attribute.value;
    const bool isQuoted = IsQuote(text_[value.begin - 1]);
    if (offset_ < value.begin) {
      // A value may begin here, unless its quote stands further on.
      const bool isBehindEquals = text_.find('=', attribute.name.end) < offset_;
      return isBehindEquals && !isQuoted ? With(attribute, CursorOf(Where::kValue, Here()))
                                         : Cursor();
    }
    Span word = value;
    if (!isQuoted || !IsClosed(value))
      word = {word.begin, std::min<std::size_t>(text_.find_first_of(kBlanks, offset_), value.end)};
    return With(attribute, CursorOf(Where::kValue, word));
  }

  // Whether the quote behind a quoted value is its own. It is not in `id=" name="x"`: there it opens
  // the next value.
  bool IsClosed(Span value) const {
    if (At(value.end) != text_[value.begin - 1]) return false;
    const char next = At(value.end + 1);
    if (value.end + 1 == text_.size() || IsBlank(next) || next == '>') return true;
    if (text_.substr(value.end + 1).starts_with("/>")) return true;
    const std::string_view inside = text_.substr(value.begin, value.Size());
    const std::size_t equals = inside.find_last_not_of(kBlanks);
    if (equals == inside.npos || equals == 0 || inside[equals] != '=') return true;
    const std::size_t nameEnd = inside.find_last_not_of(kBlanks, equals - 1);
    if (nameEnd == inside.npos || !IsOfName(inside[nameEnd])) return true;
    return inside.substr(0, nameEnd).find_last_of(kBlanks) == inside.npos;
  }

  const Document& document_;
  const std::string_view text_;  // as far as it was scanned
  const std::size_t offset_;
  NodeId before_ = kDocumentNode;
};

}  // namespace

Cursor CursorAt(const Manifest& manifest, std::size_t offset) {
  if (!manifest.source.IsDecoded()) return {};
  const Document& document = manifest.document;
  Cursor cursor = CursorFinder(manifest, offset).Find();
  if (cursor.parent != kNoNode) cursor.parentElement = DescribedAt(document, cursor.parent);
  if (cursor.node == kDocumentNode) {
    cursor.element = &tarnmf::grammar::kDocument;
  } else if (cursor.node != kNoNode && cursor.parentElement != nullptr) {
    cursor.element = ChildNamed(*cursor.parentElement, document.Name(cursor.node));
  }
  if (cursor.attribute != nullptr && cursor.element != nullptr) {
    cursor.described = AttributeNamed(*cursor.element, document.Name(*cursor.attribute));
  }
  return cursor;
}

bool HasWholeStartTag(const Document& document, NodeId element) {
  return document.source->Text(document[element].startTag).ends_with('>');
}

const tarnmf::grammar::ElementT* DescribedAt(const Document& document, NodeId node) {
  std::vector<NodeId> path;
  for (; node != kDocumentNode; node = document[node].parent)
    path.push_back(node);
  const tarnmf::grammar::ElementT* described = &tarnmf::grammar::kDocument;
  for (auto each = path.rbegin(); each != path.rend() && described != nullptr; ++each) {
    const bool isElement = document[*each].kind == NodeKind::kElement;
    described = isElement ? ChildNamed(*described, document.Name(*each)) : nullptr;
  }
  return described;
}

}  // namespace tool::lsp
