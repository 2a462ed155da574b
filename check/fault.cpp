#include "check/fault.h"

#include <algorithm>
#include <expat.h>
#include <fmt/format.h>
#include <optional>
#include <utf8.h>
#include <utility>

#include "check/characters.h"
#include "check/encoding.h"

namespace tarnmf::check {
namespace {

struct Fault {
  Span span;
  std::string message;
  std::vector<Related> related;
};

// Looks at what stands where the judge stopped.
class Explanation {
 public:
  Explanation(const Document& document, Refusal refusal)
      : document_(document),
        text_(document.source->Text()),
        error_(refusal.error),
        offset_(std::min(refusal.offset, text_.size())),
        node_(NodeAt(offset_)) {}

  Fault Explain() const {
    if (IsWithin(document_.declaration)) return InDeclaration();
    if (IsWithin(document_.doctype)) return InDoctype();
    if (error_ == XML_ERROR_NO_ELEMENTS || offset_ == text_.size()) return BreaksOff();
    if (const std::optional<Fault> fault = WithoutCharacter()) return *fault;
    switch (error_) {
      case XML_ERROR_UNCLOSED_TOKEN:
      case XML_ERROR_PARTIAL_CHAR:
      case XML_ERROR_UNCLOSED_CDATA_SECTION:
        return Unfinished();
      case XML_ERROR_TAG_MISMATCH:
        return EndTag();
      case XML_ERROR_DUPLICATE_ATTRIBUTE:
        return AttributeTwice();
      case XML_ERROR_BAD_CHAR_REF:
        return At(ReferenceAt(offset_), "{} is no character of XML");
      case XML_ERROR_UNDEFINED_ENTITY:
      case XML_ERROR_ENTITY_DECLARED_IN_PE:
        return At(ReferenceAt(offset_), "no entity is declared for {}");
      case XML_ERROR_RECURSIVE_ENTITY_REF:
        return At(ReferenceAt(offset_), "{} refers to itself");
      case XML_ERROR_ASYNC_ENTITY:
        return At(ReferenceAt(offset_), "{} stands for half an element");
      case XML_ERROR_MISPLACED_XML_PI:
        return Declaration();
      default:
        return ByNode();
    }
  }

 private:
  // ---- What stands where ------------------------------------------------------------------------

  bool IsWithin(Span span) const { return offset_ >= span.begin && offset_ < span.end; }
  bool IsAt(std::size_t at, std::string_view what) const {
    return text_.substr(at, what.size()) == what;
  }

  // The last node that begins at `offset` or before.
  NodeId NodeAt(std::size_t offset) const {
    const auto next =
        std::upper_bound(document_.nodes.begin() + 1, document_.nodes.end(), offset,
                         [](std::size_t at, const Node& node) { return at < node.span.begin; });
    return static_cast<NodeId>(next - document_.nodes.begin() - 1);
  }

  bool IsEmptyTag(const Node& node) const {
    return node.span == node.startTag && IsAt(node.startTag.end - 2, "/>");
  }

  // Whether the element is open before `offset_`; one that something other than its end tag closed
  // there is.
  bool IsOpen(const Node& node) const {
    if (node.kind != NodeKind::kElement || node.startTag.end > offset_ || IsEmptyTag(node))
      return false;
    return node.span.end > offset_ || (node.span.end == offset_ && node.content.end == offset_);
  }

  const Node* OpenElement() const {
    NodeId id = offset_ > 0 ? NodeAt(offset_ - 1) : kDocumentNode;
    while (id != kDocumentNode && !IsOpen(document_[id]))
      id = document_[id].parent;
    return id != kDocumentNode ? &document_[id] : nullptr;
  }

  const Node* RootBefore(std::size_t offset) const {
    const NodeId root = document_.Root();
    return root != kNoNode && document_[root].span.begin < offset ? &document_[root] : nullptr;
  }

  std::string_view NameOf(const Node& node) const { return document_.source->Text(node.name); }
  std::size_t LineOf(const Node& node) const { return document_.source->At(node.span.begin).line; }

  Span NameAt(std::size_t begin) const {
    std::size_t end = begin;
    while (end < text_.size() && IsOfName(text_[end]))
      ++end;
    return {begin, end};
  }

  // "&name;" or as much of it as is there.
  Span ReferenceAt(std::size_t begin) const {
    std::size_t end = std::min(begin + 1, text_.size());
    while (end < text_.size() && (IsOfName(text_[end]) || text_[end] == '#'))
      ++end;
    if (end < text_.size() && text_[end] == ';') ++end;
    return {begin, end};
  }

  Span CharacterAt(std::size_t begin) const {
    std::size_t end = begin + 1;
    while (end < text_.size() && (static_cast<unsigned char>(text_[end]) & 0xC0U) == 0x80U)
      ++end;
    return {begin, std::min(end, text_.size())};
  }

  // The message tells the text of the span.
  Fault At(Span span, fmt::format_string<std::string_view> message) const {
    return {span, fmt::format(message, document_.source->Text(span)), {}};
  }

  Related Beginning(const Node& element) const {
    return {{document_.source, element.startTag}, fmt::format("<{}> begins here", NameOf(element))};
  }

  // ---- Where the text breaks off ----------------------------------------------------------------

  Fault BreaksOff() const {
    const Span end{text_.size(), text_.size()};
    if (const Node* const open = OpenElement()) {
      return {
          end,
          fmt::format("breaks off: <{}> of line {} is not closed", NameOf(*open), LineOf(*open)),
          {Beginning(*open)}};
    }
    if (text_.find_first_not_of(kBlanks) == std::string_view::npos)
      return {{0, 0}, "the file is empty: a root element is expected", {}};
    return {end, "breaks off: there is no root element", {}};
  }

  Fault Unfinished() const {
    const Node& node = document_[node_];
    if (IsAt(offset_, "<!--"))
      return {{offset_, offset_ + 4}, "breaks off: this comment is not closed", {}};
    if (IsAt(offset_, "<![CDATA["))
      return {{offset_, offset_ + 9}, "breaks off: this CDATA section is not closed", {}};
    if (node.kind == NodeKind::kCData && error_ == XML_ERROR_UNCLOSED_CDATA_SECTION)
      return {{node.span.begin, node.content.begin},
              "breaks off: this CDATA section is not closed",
              {}};
    if (IsAt(offset_, "<?"))
      return {{offset_, offset_ + 2}, "breaks off: this instruction is not closed", {}};
    if (IsAt(offset_, "<!"))
      return {{offset_, text_.size()}, "breaks off within a declaration", {}};
    if (node.kind == NodeKind::kElement && node.span.begin == offset_) {
      for (const Attribute& attribute : document_.AttributesOf(node_)) {
        if (auto fault = UnclosedValue(attribute)) return *fault;
      }
      return {{text_.size(), text_.size()},
              fmt::format("breaks off within the tag <{}> of line {}", NameOf(node), LineOf(node)),
              {}};
    }
    if (text_[offset_] == '&') return At(ReferenceAt(offset_), "breaks off: {} lacks its \";\"");
    return {{offset_, text_.size()}, "breaks off within a tag", {}};
  }

  // A value that begins with a quote and does not end with it.
  std::optional<Fault> UnclosedValue(const Attribute& attribute) const {
    const std::size_t quote = attribute.value.begin - 1;
    const bool isQuoted =
        attribute.value.begin > attribute.name.end && (text_[quote] == '"' || text_[quote] == '\'');
    const std::size_t end = attribute.value.end;
    if (!isQuoted || (end < text_.size() && text_[end] == text_[quote])) return std::nullopt;
    return Fault{
        {quote, end},
        fmt::format(R"(the value of "{}" lacks its closing quote)", document_.Name(attribute)),
        {}};
  }

  // ---- Characters -------------------------------------------------------------------------------

  // Something that is no character of XML, where everything else may be right.
  std::optional<Fault> WithoutCharacter() const {
    auto at = text_.begin() + static_cast<std::ptrdiff_t>(offset_);
    const char32_t c = utf8::unchecked::next(at);
    const bool isControl = (c < 0x20 && !IsBlank(static_cast<char>(c))) || c == 0xFFFE ||
                           c == 0xFFFF || (c >= 0x7F && c < 0xA0);
    if (!isControl) return std::nullopt;
    return Fault{CharacterAt(offset_),
                 fmt::format("the character U+{:04X} is not admitted", static_cast<unsigned>(c)),
                 {}};
  }

  // ---- Declarations -----------------------------------------------------------------------------

  Fault InDeclaration() const {
    return {document_.declaration,
            R"(malformed XML declaration: expected <?xml version="1.0" encoding="..."?>)",
            {}};
  }

  Fault Declaration() const {
    const Span span{offset_, offset_ + 5};
    if (OpenElement() != nullptr || RootBefore(offset_) != nullptr)
      return {span, "an XML declaration stands at the beginning of a file only", {}};
    return {span,
            "nothing may stand before the XML declaration, a blank or an empty line included",
            {}};
  }

  Fault InDoctype() const {
    if (error_ == XML_ERROR_UNDEFINED_ENTITY)
      return At(ReferenceAt(offset_), "no entity is declared for {}");
    return {CharacterAt(offset_),
            fmt::format("malformed document type declaration: {}",
                        XML_ErrorString(static_cast<XML_Error>(error_))),
            {}};
  }

  // ---- Tags -------------------------------------------------------------------------------------

  Fault EndTag() const {
    const Span name = NameAt(offset_ + 2);
    const std::size_t close = std::min(text_.find('>', name.end), text_.size() - 1);
    const Span tag{offset_, close + 1};
    const std::string_view ended = document_.source->Text(name);
    if (const Node* const open = OpenElement()) {
      return {tag,
              fmt::format("</{}> ends <{}> of line {}", ended, NameOf(*open), LineOf(*open)),
              {Beginning(*open)}};
    }
    return {tag, fmt::format("</{}> ends nothing: no element is open", ended), {}};
  }

  Fault AttributeTwice() const {
    const Span name = NameAt(offset_);
    const std::string_view text = document_.source->Text(name);
    Fault fault{
        name, fmt::format(R"("{}" is given twice in <{}>)", text, NameOf(document_[node_])), {}};
    const auto range = document_.AttributesOf(node_);
    const auto first = std::find_if(range.begin(), range.end(), [&](const Attribute& each) {
      return document_.Name(each) == text;
    });
    if (first != range.end() && first->name.begin < offset_)
      fault.related.push_back({{document_.source, first->name}, "first given here"});
    return fault;
  }

  Fault ByNode() const {
    const Node& node = document_[node_];
    if (node.kind == NodeKind::kElement && offset_ < node.startTag.end && offset_ > node.span.begin)
      return InStartTag(node);
    const bool isOutside = OpenElement() == nullptr;
    if (node.kind == NodeKind::kComment && offset_ > node.span.begin) return InComment(node);
    if (isOutside) return OutsideRoot();
    if (node.kind == NodeKind::kInstruction && offset_ < node.span.end)
      return At(NameAt(node.name.begin), "malformed instruction <?{}");
    return InText();
  }

  Fault InStartTag(const Node& node) const {
    for (const Attribute& attribute : document_.AttributesOf(node_)) {
      if (auto fault = InAttribute(attribute)) return *fault;
    }
    const char c = offset_ < text_.size() ? text_[offset_] : '\0';
    if (c == '<') {
      return {{node.span.begin, node.startTag.end},
              fmt::format(R"(the tag <{}> lacks its ">")", NameOf(node)),
              {}};
    }
    if (IsOfName(c)) return At(NameAt(offset_), "\"{}\" is no name of an attribute");
    return At(CharacterAt(offset_), "\"{}\" cannot stand in a tag");
  }

  // Nothing: this attribute is not the one at fault.
  std::optional<Fault> InAttribute(const Attribute& attribute) const {
    const std::string_view name = document_.Name(attribute);
    if (offset_ == attribute.name.begin && offset_ > 0 && !IsBlank(text_[offset_ - 1])) {
      return Fault{attribute.name,
                   fmt::format(R"(a blank is missing before "{}", or a quote before that)", name),
                   {}};
    }
    if (offset_ < attribute.name.begin || offset_ > attribute.value.end + 1) return std::nullopt;
    if (auto fault = UnclosedValue(attribute)) return fault;
    if (attribute.value.begin == attribute.name.end)
      return Fault{
          attribute.name, fmt::format(R"("{}" has no value: expected {}="...")", name, name), {}};
    const char quote = text_[attribute.value.begin - 1];
    if (quote != '"' && quote != '\'') {
      return Fault{
          attribute.value, fmt::format(R"(the value of "{}" must stand in quotes)", name), {}};
    }
    if (offset_ >= attribute.value.end) return std::nullopt;
    return InText();
  }

  // ---- Text -------------------------------------------------------------------------------------

  Fault InText() const {
    if (IsAt(offset_, "]]>"))
      return At({offset_, offset_ + 3}, R"("{}" cannot stand in a text: write "]]&gt;")");
    const std::size_t ampersand = text_.rfind('&', offset_);
    if (ampersand != std::string_view::npos && ampersand + 1 >= offset_ - NameBefore()) {
      const Span reference = ReferenceAt(ampersand);
      if (reference.Size() == 1)
        return At(reference, "\"{}\" alone is no reference: write \"&amp;\"");
      if (text_[reference.end - 1] != ';')
        return At(reference, "\"{}\" lacks its \";\", or write \"&amp;\"");
      return At(reference, "\"{}\" is no reference");
    }
    if (text_[offset_ > 0 && text_[offset_] != '<' ? offset_ - 1 : offset_] == '<') {
      const std::size_t less = text_[offset_] == '<' ? offset_ : offset_ - 1;
      return At({less, less + 1}, "\"{}\" begins no tag here: write \"&lt;\"");
    }
    return At(CharacterAt(offset_), "\"{}\" cannot stand here");
  }

  // The letters of a name right before the offset.
  std::size_t NameBefore() const {
    std::size_t begin = offset_;
    while (begin > 0 && (IsOfName(text_[begin - 1]) || text_[begin - 1] == '#'))
      --begin;
    return offset_ - begin;
  }

  Fault InComment(const Node& node) const {
    const std::size_t dashes = text_.find("--", node.content.begin);
    if (dashes == std::string_view::npos) return At(node.span, "malformed comment {}");
    return At({dashes, dashes + 2}, "\"{}\" cannot stand in a comment");
  }

  Fault OutsideRoot() const {
    const Node* const root = RootBefore(offset_);
    const Node& node = document_[node_];
    if (root == nullptr) {
      if (text_[offset_] == '<') return InText();
      return {TextLine(), "a text stands before the root element", {}};
    }
    if (IsAt(offset_, "</")) return EndTag();
    if (node.kind == NodeKind::kElement && node.span.begin == offset_) {
      return {node.startTag,
              fmt::format("a second root <{}>: <{}> of line {} is closed already", NameOf(node),
                          NameOf(*root), LineOf(*root)),
              {Beginning(*root)}};
    }
    return {
        TextLine(), fmt::format("a text stands after the end of the root <{}>", NameOf(*root)), {}};
  }

  // From the offset to the end of its line, or to the next tag.
  Span TextLine() const {
    const std::size_t end = std::min(text_.find_first_of("<\r\n", offset_ + 1), text_.size());
    return {offset_, end};
  }

  const Document& document_;
  const std::string_view text_;
  const int error_;
  const std::size_t offset_;
  const NodeId node_;
};

}  // namespace

Finding NotWellFormed(Place place, std::string_view message) {
  return Found(Rule::kNotWellFormed, kBtkOk, place,
               fmt::format("{}; the rest of this file is not judged", message));
}

Finding ExplainRefusal(const Document& document, Refusal refusal) {
  Fault fault = Explanation(document, refusal).Explain();
  Finding finding = NotWellFormed({document.source, fault.span}, fault.message);
  finding.related = std::move(fault.related);
  return finding;
}

}  // namespace tarnmf::check
