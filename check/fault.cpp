// SPDX-License-Identifier: Apache-2.0
#include "check/fault.h"

#include <algorithm>
#include <expat.h>
#include <fmt/format.h>
#include <optional>
#include <utf8.h>
#include <utility>

#include "check/characters.h"
#include "check/references.h"
#include "check/surroundings.h"

namespace tarnmf::check {
namespace {

bool IsXmlName(std::string_view name) {
  return name.size() == 3 && ToUpper(name[0]) == 'X' && ToUpper(name[1]) == 'M' &&
         ToUpper(name[2]) == 'L';
}

// ---- Where the text breaks off ------------------------------------------------------------------

// A CDATA section that the text ends in; the judge has taken some of it already.
std::optional<Fault> InCData(const Surroundings& here) {
  const Node& last = here.document.nodes.back();
  if (last.kind != NodeKind::kCData || last.content.end != here.text.size()) return std::nullopt;
  return Fault{
      {last.span.begin, last.content.begin}, "breaks off: this CDATA section is not closed", {}};
}

Fault BreaksOff(const Surroundings& here) {
  const Span end{here.text.size(), here.text.size()};
  if (const auto fault = InCData(here)) return *fault;
  if (here.document.doctype.Size() > 0 && here.document.doctype.end == end.end)
    return {end, "breaks off within the document type declaration", {}};
  if (const Node* const open = here.OpenElement()) {
    return {end,
            fmt::format("breaks off: <{}> of line {} is not closed", here.NameOf(*open),
                        here.LineOf(*open)),
            {here.Beginning(*open)}};
  }
  if (here.text.find_first_not_of(kBlanks) == std::string_view::npos)
    return {{0, 0}, "the file is empty: a root element is expected", {}};
  return {end, "breaks off: there is no root element", {}};
}

// Within something that has begun at the offset.
Fault Unfinished(const Surroundings& here) {
  struct Beginning {
    std::string_view begin;
    const char* message;
  };
  constexpr Beginning kBeginnings[] = {
      {"<!--", "breaks off: this comment is not closed"},
      {"<?", "breaks off: this instruction is not closed"},
      {"<!", "breaks off within a declaration"},
  };
  if (const auto fault = InCData(here)) return *fault;
  if (here.offset == 0 && here.IsAt("<?xml"))
    return {{0, 5}, R"(the XML declaration lacks its "?>")", {}};
  for (const Beginning& each : kBeginnings) {
    if (here.IsAt(each.begin))
      return {{here.offset, here.offset + each.begin.size()}, each.message, {}};
  }
  if (here.IsAt("</")) return ExplainEndTag(here);
  const Node& node = here.document[here.node];
  if (node.kind == NodeKind::kElement && node.span.begin == here.offset)
    return ExplainUnfinishedTag(here);
  if (here.IsAt("&"))
    return here.Tell(here.ReferenceAt(here.offset), R"(breaks off: "{}" lacks its ";")");
  return {{here.offset, here.text.size()}, "breaks off within a tag", {}};
}

// ---- Declarations -------------------------------------------------------------------------------

Fault InDeclaration(Span declaration) {
  return {declaration,
          R"(malformed XML declaration: expected <?xml version="1.0" encoding="UTF-8"?>)",
          {}};
}

Fault MisplacedDeclaration(const Surroundings& here) {
  const Span span{here.offset, here.offset + 5};
  if (here.OpenElement() != nullptr || here.RootBefore() != nullptr)
    return {span, "an XML declaration stands at the beginning of a file only", {}};
  return {span, "nothing stands before an XML declaration, not even a blank or an empty line", {}};
}

Fault InDoctype(const Surroundings& here, int error) {
  if (here.OpenElement() != nullptr || here.RootBefore() != nullptr)
    return {here.LineFrom(here.document.doctype.begin),
            "a document type declaration stands before the root element only",
            {}};
  if (error == XML_ERROR_UNDEFINED_ENTITY)
    return here.Tell(here.ReferenceAt(here.offset), "no entity is declared for {}");
  return {here.CharacterAt(here.offset), "malformed document type declaration", {}};
}

// ---- Between tags -------------------------------------------------------------------------------

Fault InComment(const Surroundings& here, const Node& node) {
  const std::size_t dashes = here.text.find("--", node.content.begin);
  if (dashes == std::string_view::npos) return {node.span, "malformed comment", {}};
  return here.Tell({dashes, dashes + 2}, R"("{}" cannot stand in a comment)");
}

// "<" that begins no element.
Fault InMarkup(const Surroundings& here, std::size_t less) {
  const Span doctype = here.LineFrom(less);
  if (here.IsAt(less, "<!DOCTYPE"))
    return {doctype, "a document has one document type declaration, before its root", {}};
  const Span name = here.NameAt(std::min(less + 2, here.text.size()));
  std::string word(here.text.substr(name.begin, name.Size()));
  std::transform(word.begin(), word.end(), word.begin(), ToUpper);
  if (here.IsAt(less, "<!") && word == "DOCTYPE")
    return {{less, name.end}, R"("<!DOCTYPE" is written in capital letters)", {}};
  return here.Tell({less, less + 1}, R"("{}" begins no tag here: write "&lt;")");
}

// The first thing outside the root that is neither blank nor comment nor instruction; nothing when
// it is an element.
std::optional<Span> StrayText(const Surroundings& here, std::size_t from) {
  for (const NodeId child : here.document.ChildrenOf(kDocumentNode)) {
    const Node& node = here.document[child];
    if (node.span.begin > here.offset) break;
    if (node.span.begin < from) continue;
    if (node.kind == NodeKind::kCData || node.kind == NodeKind::kEntity) return node.span;
    if (node.kind != NodeKind::kText) continue;
    const std::size_t begin = here.text.find_first_not_of(kBlanks, node.span.begin);
    if (begin < node.span.end && !here.IsAt(begin, "<")) return here.LineFrom(begin);
  }
  return std::nullopt;
}

Fault OutsideRoot(const Surroundings& here) {
  const Node* const root = here.RootBefore();
  const Node& node = here.document[here.node];
  const bool isAfterLess = here.offset > 0 && here.IsAt(here.offset - 1, "<");
  const std::size_t less = isAfterLess ? here.offset - 1 : here.offset;
  if (const auto span = StrayText(here, root != nullptr ? root->span.end : 0)) {
    if (root == nullptr) return {*span, "a text stands before the root element", {}};
    return {
        *span, fmt::format("a text stands after the end of the root <{}>", here.NameOf(*root)), {}};
  }
  if (root != nullptr && here.IsAt(less, "</"))
    return ExplainEndTag(Surroundings(here.document, less));
  if (root != nullptr && node.kind == NodeKind::kElement && node.span.begin == less) {
    return {node.startTag,
            fmt::format("a second root <{}>: <{}> of line {} is closed already", here.NameOf(node),
                        here.NameOf(*root), here.LineOf(*root)),
            {here.Beginning(*root)}};
  }
  return here.IsAt(less, "<") ? InMarkup(here, less) : ExplainText(here);
}

// An instruction whose name or beginning is not right.
Fault InInstruction(const Surroundings& here, const Node& node) {
  const Span beginning{node.span.begin, std::max(node.name.end, node.span.begin + 2)};
  if (node.span.begin == 0 && here.NameOf(node) == "xml") return InDeclaration(node.span);
  if (IsXmlName(here.NameOf(node)))
    return here.Tell(beginning, R"("{}": no instruction has this name)");
  return here.Tell(beginning, R"(malformed instruction "{}")");
}

bool IsDeclared(const Surroundings& here, Span reference) {
  const Span doctype = here.document.doctype;
  const std::string_view name = here.text.substr(reference.begin + 1, reference.Size() - 2);
  return here.text.substr(doctype.begin, doctype.Size()).find(fmt::format("ENTITY {} ", name)) !=
         std::string_view::npos;
}

// The reference that is at fault. Where one in a value is, the judge stops at the tag.
Span RefusedReference(const Surroundings& here, int error) {
  if (!here.IsAt("<")) return here.ReferenceAt(here.offset);
  Span last;
  for (const Attribute& attribute : here.document.AttributesOf(here.node)) {
    if (attribute.isKnown) continue;
    const Span value = attribute.value;
    for (std::size_t at = value.begin; (at = here.text.find('&', at)) < value.end; ++at) {
      const Span reference = here.ReferenceAt(at);
      const bool isKnown =
          ReferredCharacter(here.text.substr(at + 1, reference.Size() - 2)).has_value();
      const bool isCharacter = here.IsAt(at, "&#");
      if (isKnown || isCharacter != (error == XML_ERROR_BAD_CHAR_REF)) continue;
      last = reference;
      if (error != XML_ERROR_UNDEFINED_ENTITY || !IsDeclared(here, reference)) return reference;
    }
  }
  return last;
}

// Where the end tag begins that another tag ends at the offset.
std::optional<std::size_t> UnfinishedEndTag(const Surroundings& here) {
  if (here.offset == 0 || !here.IsAt("<")) return std::nullopt;
  const std::size_t begin = here.text.find_last_of("<>", here.offset - 1);
  return here.IsAt(begin, "</") ? std::optional(begin) : std::nullopt;
}

Fault ByNode(const Surroundings& here, int error) {
  const Node& node = here.document[here.node];
  const bool isInside = here.offset > node.span.begin && here.offset < node.span.end;
  if (node.kind == NodeKind::kElement && isInside && here.offset < node.startTag.end)
    return ExplainStartTag(here, here.node);
  if (node.kind == NodeKind::kComment && isInside) return InComment(here, node);
  if (node.kind == NodeKind::kInstruction && isInside) return InInstruction(here, node);
  if (const auto fault = ExplainReference(here)) return *fault;
  if (node.kind == NodeKind::kElement && here.offset == node.span.begin) {
    const Span reference = RefusedReference(here, error);
    if (reference.Size() > 0)
      return here.Tell(reference, "{} stands for what cannot stand in a value");
  }
  const NodeId before = here.ElementBefore();
  if (here.IsAt("<") && before != kNoNode && IsUnfinishedTag(here, before))
    return ExplainStartTag(here, before);
  if (const auto endTag = UnfinishedEndTag(here))
    return ExplainEndTag(Surroundings(here.document, *endTag));
  if (here.OpenElement() == nullptr) return OutsideRoot(here);
  const std::size_t less = here.IsAt("<") ? here.offset : here.offset - 1;
  if (here.IsAt(less, "</") || here.IsAt(here.offset - 2, "</"))
    return ExplainEndTag(Surroundings(here.document, here.text.rfind("</", here.offset)));
  if (here.IsAt(less, "<")) return InMarkup(here, less);
  return ExplainText(here);
}

// Something that is no character of XML, where everything else may be right.
std::optional<Fault> InCharacter(const Surroundings& here) {
  auto at = here.text.begin() + static_cast<std::ptrdiff_t>(here.offset);
  const char32_t c = utf8::unchecked::next(at);
  const bool isRefused = (c < 0x20 && !IsBlank(static_cast<char>(c))) || c == 0xFFFE ||
                         c == 0xFFFF || (c >= 0x7F && c < 0xA0);
  if (!isRefused) return std::nullopt;
  return Fault{here.CharacterAt(here.offset),
               fmt::format("the character U+{:04X} is not admitted", static_cast<unsigned>(c)),
               {}};
}

Fault Explain(const Surroundings& here, int error) {
  if (here.IsWithin(here.document.declaration)) return InDeclaration(here.document.declaration);
  if (here.IsWithin(here.document.doctype)) return InDoctype(here, error);
  if (error == XML_ERROR_NO_ELEMENTS || here.offset == here.text.size()) return BreaksOff(here);
  if (IsBreakingOff({error, here.offset})) return Unfinished(here);
  if (const std::optional<Fault> fault = InCharacter(here)) return *fault;
  switch (error) {
    case XML_ERROR_TAG_MISMATCH:
      return ExplainEndTag(here);
    case XML_ERROR_DUPLICATE_ATTRIBUTE:
      return ExplainAttributeTwice(here);
    case XML_ERROR_BAD_CHAR_REF:
      return here.Tell(RefusedReference(here, error), "{} is no character of XML");
    case XML_ERROR_UNDEFINED_ENTITY:
      return here.Tell(RefusedReference(here, error), "no entity is declared for {}");
    case XML_ERROR_RECURSIVE_ENTITY_REF:
      return here.Tell(RefusedReference(here, error), "{} refers to itself");
    case XML_ERROR_ASYNC_ENTITY:
      return here.Tell(RefusedReference(here, error), "{} stands for half an element");
    case XML_ERROR_MISPLACED_XML_PI:
      return MisplacedDeclaration(here);
    default:
      return ByNode(here, error);
  }
}

}  // namespace

std::optional<Fault> ExplainReference(const Surroundings& here) {
  // The judge stops at the reference, or after its name.
  std::size_t begin = here.offset;
  if (!here.IsAt("&")) {
    while (begin > 0 && (IsOfName(here.text[begin - 1]) || here.text[begin - 1] == '#'))
      --begin;
    if (begin == 0 || here.text[--begin] != '&') return std::nullopt;
  }
  const Span reference = here.ReferenceAt(begin);
  if (reference.Size() == 1)
    return here.Tell(reference, R"("{}" alone is no reference: write "&amp;")");
  if (here.text[reference.end - 1] != ';')
    return here.Tell(reference, R"("{}" lacks its ";", or its "&" must be written "&amp;")");
  if (BeginsName(here.text[begin + 1]))
    return here.Tell(reference, "{} stands for what cannot stand here");
  return here.Tell(reference, R"("{}" is no reference)");
}

Fault ExplainText(const Surroundings& here) {
  for (const std::size_t back : {std::size_t{0}, std::size_t{1}, std::size_t{2}}) {
    const std::size_t begin = here.offset - std::min(back, here.offset);
    if (here.IsAt(begin, "]]>"))
      return here.Tell({begin, begin + 3}, R"("{}" cannot stand in a text: write "]]&gt;")");
  }
  if (const auto fault = ExplainReference(here)) return *fault;
  if (here.IsAt("<"))
    return here.Tell({here.offset, here.offset + 1},
                     R"("{}" cannot stand in a value: write "&lt;")");
  return here.Tell(here.CharacterAt(here.offset), R"("{}" cannot stand here)");
}

Finding NotWellFormed(Place place, std::string_view message) {
  return Found(Rule::kNotWellFormed, kBtkOk, place,
               fmt::format("{}; the rest of this file is not judged", message));
}

Finding ExplainRefusal(const Document& document, Refusal refusal) {
  // Where tags do not match, the judge stops at the name.
  if (refusal.error == XML_ERROR_TAG_MISMATCH && refusal.offset >= 2) refusal.offset -= 2;
  Fault fault = Explain(Surroundings(document, refusal.offset), refusal.error);
  Finding finding = NotWellFormed({document.source, fault.span}, fault.message);
  finding.related = std::move(fault.related);
  return finding;
}

}  // namespace tarnmf::check
