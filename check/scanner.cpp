// SPDX-License-Identifier: Apache-2.0
#include "check/scanner.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "check/characters.h"
#include "check/doctype.h"
#include "check/references.h"

namespace tarnmf::check {
namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

class Scanner {
 public:
  Scanner(std::string_view text, Document& document) : text_(text), document_(document) {}

  void Run() {
    document_.nodes.emplace_back().span = {0, text_.size()};
    document_.nodes.front().content = {0, text_.size()};
    open_.push_back({kDocumentNode, kNoNode});
    pos_ = document_.declaration.end;
    while (pos_ < text_.size()) {
      if (text_[pos_] == '<') {
        ReadMarkup();
      } else {
        ReadText(pos_);
      }
    }
    while (open_.size() > 1)
      CloseLast(text_.size(), text_.size());
    // Documents are kept while load points are checked, and by editors as long as they are open.
    document_.nodes.shrink_to_fit();
    document_.attributes.shrink_to_fit();
  }

 private:
  struct Open {
    NodeId node;
    NodeId lastChild;
  };

  bool IsAt(std::string_view what) const { return text_.substr(pos_, what.size()) == what; }
  char At(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }

  // Past the next `what`, or at the end of the text.
  std::size_t PastNext(std::string_view what, std::size_t from) const {
    const std::size_t at = text_.find(what, from);
    return at != kNowhere ? at + what.size() : text_.size();
  }

  // ---- Nodes ------------------------------------------------------------------------------------

  Node& Append(NodeKind kind, Span span) {
    const auto id = static_cast<NodeId>(document_.nodes.size());
    Open& parent = open_.back();
    Node& node = document_.nodes.emplace_back();
    node.kind = kind;
    node.span = span;
    node.content = span;
    node.parent = parent.node;
    if (parent.lastChild == kNoNode) {
      document_.nodes[parent.node].firstChild = id;
    } else {
      document_.nodes[parent.lastChild].next = id;
    }
    parent.lastChild = id;
    return node;
  }

  // A node between two delimiters, of which the second one may be missing.
  Node& AppendDelimited(NodeKind kind, std::string_view begin, std::string_view end) {
    const std::size_t next = PastNext(end, pos_ + begin.size());
    Node& node = Append(kind, {pos_, next});
    const bool isEnded =
        next >= pos_ + begin.size() + end.size() && text_.substr(0, next).ends_with(end);
    node.content = {pos_ + begin.size(), isEnded ? next - end.size() : next};
    pos_ = next;
    return node;
  }

  void CloseLast(std::size_t contentEnd, std::size_t end) {
    Node& node = document_.nodes[open_.back().node];
    node.content = {node.content.begin, contentEnd};
    node.span = {node.span.begin, end};
    --openNames_[NameOf(node)];
    open_.pop_back();
  }

  std::string_view NameOf(const Node& node) const {
    return text_.substr(node.name.begin, node.name.Size());
  }

  // ---- Text -------------------------------------------------------------------------------------

  // From `pos_`; the text's first markup is looked for from `from`.
  void ReadText(std::size_t from) {
    const std::size_t end = std::min(text_.find('<', from), text_.size());
    while (pos_ < end) {
      const Span entity = NextEntity(end);
      if (entity.begin > pos_) Append(NodeKind::kText, {pos_, entity.begin});
      if (entity.Size() > 0) {
        Node& node = Append(NodeKind::kEntity, entity);
        node.name = node.content = {entity.begin + 1, entity.end - 1};
      }
      pos_ = entity.end;
    }
  }

  // The next reference to an entity of the document's own; the empty span at `end` when none is.
  Span NextEntity(std::size_t end) {
    for (std::size_t at = pos_; (at = NextAmpersand(at)) < end; ++at) {
      std::size_t last = at + 1;
      if (!BeginsName(At(last))) continue;
      while (IsOfName(At(last)))
        ++last;
      if (At(last) != ';') continue;
      if (!ReferredCharacter(text_.substr(at + 1, last - at - 1))) return {at, last + 1};
    }
    return {end, end};
  }

  std::size_t NextAmpersand(std::size_t from) {
    if (ampersand_ < from) ampersand_ = std::min(text_.find('&', from), text_.size());
    return ampersand_;
  }

  // ---- Markup -----------------------------------------------------------------------------------

  void ReadMarkup() {
    if (IsAt("<!--")) {
      AppendDelimited(NodeKind::kComment, "<!--", "-->");
    } else if (IsAt("<![CDATA[")) {
      AppendDelimited(NodeKind::kCData, "<![CDATA[", "]]>");
    } else if (IsAt("<!DOCTYPE") && document_.doctype.Size() == 0) {
      document_.doctype = {pos_, EndOfDoctype(text_, pos_)};
      pos_ = document_.doctype.end;
    } else if (IsAt("<?")) {
      ReadInstruction();
    } else if (IsAt("</") && BeginsName(At(pos_ + 2))) {
      ReadEndTag();
    } else if (BeginsName(At(pos_ + 1))) {
      ReadStartTag();
    } else {
      ReadText(pos_ + 1);
    }
  }

  void ReadInstruction() {
    // One that is not ended is a text, so that it does not take everything with it.
    if (instructionEnd_ < pos_ + 2) instructionEnd_ = text_.find("?>", pos_ + 2);
    if (instructionEnd_ == kNowhere) return ReadText(pos_ + 1);
    Node& node = AppendDelimited(NodeKind::kInstruction, "<?", "?>");
    std::size_t end = node.content.begin;
    while (end < node.content.end && IsOfName(text_[end]))
      ++end;
    node.name = {node.content.begin, end};
    node.content = {end, node.content.end};
  }

  void ReadEndTag() {
    const std::size_t begin = pos_;
    pos_ += 2;
    const Span name = ReadName();
    pos_ = std::min(text_.find_first_of("<>", pos_), text_.size());
    if (At(pos_) == '>') ++pos_;
    const auto open = openNames_.find(text_.substr(name.begin, name.Size()));
    if (open == openNames_.end() || open->second == 0) return;
    while (NameOf(document_.nodes[open_.back().node]) != open->first)
      CloseLast(begin, begin);
    CloseLast(begin, pos_);
  }

  void ReadStartTag() {
    const std::size_t begin = pos_++;
    const auto firstAttribute = static_cast<std::uint32_t>(document_.attributes.size());
    const Span name = ReadName();
    const bool isEmpty = ReadAttributes();
    Node& node = Append(NodeKind::kElement, {begin, pos_});
    node.name = name;
    node.startTag = {begin, pos_};
    node.content = {pos_, pos_};
    node.firstAttribute = firstAttribute;
    node.attributeCount = static_cast<std::uint32_t>(document_.attributes.size()) - firstAttribute;
    if (isEmpty) return;
    open_.push_back({static_cast<NodeId>(document_.nodes.size() - 1), kNoNode});
    ++openNames_[NameOf(node)];
  }

  // Up to the end of the start tag. Whether it is the tag of an empty element.
  bool ReadAttributes() {
    for (;;) {
      SkipBlanks();
      if (pos_ == text_.size() || text_[pos_] == '<') return false;
      if (text_[pos_] == '>') {
        ++pos_;
        return false;
      }
      if (IsAt("/>")) {
        pos_ += 2;
        return true;
      }
      if (IsOfName(text_[pos_])) {
        ReadAttribute();
      } else {
        ++pos_;
      }
    }
  }

  void ReadAttribute() {
    Attribute attribute;
    attribute.name = ReadName();
    attribute.value = {pos_, pos_};
    const std::size_t equals = std::min(text_.find_first_not_of(kBlanks, pos_), text_.size());
    if (At(equals) == '=') {
      pos_ = equals + 1;
      SkipBlanks();
      attribute.value = ReadValue();
    }
    ResolvedValue value = ResolveValue(document_.source->Text(attribute.value), document_.version);
    attribute.text = std::move(value.text);
    attribute.isKnown = value.isKnown;
    document_.attributes.push_back(std::move(attribute));
  }

  Span ReadValue() {
    const char quote = At(pos_);
    if (quote != '"' && quote != '\'') return ReadBareValue();
    const std::size_t begin = ++pos_;
    const std::size_t closing = std::min(text_.find(quote, begin), text_.size());
    const std::string_view value = text_.substr(begin, closing - begin);
    const std::size_t markup = std::min(value.find('<'), value.size());
    if (closing < text_.size() && (markup == value.size() || EndsValue(value, closing))) {
      pos_ = closing + 1;
      return {begin, closing};
    }
    // The closing quote is missing: the value ends with its line or its tag.
    pos_ = begin + std::min(value.substr(0, markup).find_first_of(">\r\n"), markup);
    if (At(pos_) == '>' && pos_ > begin && text_[pos_ - 1] == '/') --pos_;
    return {begin, pos_};
  }

  // Whether a value with a "<" in it is meant to reach to this quote.
  bool EndsValue(std::string_view value, std::size_t closing) const {
    const bool isOneLine = value.find_first_of("\r\n") == std::string_view::npos;
    const char next = At(closing + 1);
    return isOneLine && (IsBlank(next) || next == '/' || next == '>');
  }

  Span ReadBareValue() {
    const std::size_t begin = pos_;
    while (pos_ < text_.size() && !IsBlank(text_[pos_]) && text_[pos_] != '<' &&
           text_[pos_] != '>' && !IsAt("/>"))
      ++pos_;
    return {begin, pos_};
  }

  Span ReadName() {
    const std::size_t begin = pos_;
    while (IsOfName(At(pos_)))
      ++pos_;
    return {begin, pos_};
  }

  void SkipBlanks() { pos_ = std::min(text_.find_first_not_of(kBlanks, pos_), text_.size()); }

  std::string_view text_;
  Document& document_;
  std::size_t pos_ = 0;
  std::vector<Open> open_;                                       // from the document inwards
  std::unordered_map<std::string_view, std::size_t> openNames_;  // how many of a name are open
  // The next one from the last place that asked, so that no stretch is searched twice.
  std::size_t ampersand_ = 0;
  std::size_t instructionEnd_ = 0;
};

}  // namespace

void Scan(std::string_view text, Document& document) {
  Scanner(text, document).Run();
}

}  // namespace tarnmf::check
