// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/hover.h"

#include <fmt/format.h>

#include "check/paths.h"
#include "tools/tarnmf/grammar_sentences.h"
#include "tools/tarnmf/lsp/cursor.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using tarnmf::grammar::AttributeT;
using tarnmf::grammar::ConditionT;
using tarnmf::grammar::ElementT;

std::string ElementHover(const ElementT& element, const NameStyle& style) {
  std::string text = fmt::format(
      "{}: {}", ElementList(std::vector<const ElementT*>{&element}, style), element.doc);
  for (const std::string& sentence : ContentSentences(element, style))
    text += "\n\n" + sentence;
  return text;
}

std::string AttributeHover(const ElementT& element, const AttributeT& attribute,
                           const NameStyle& style) {
  std::string text = fmt::format("{0}{1}{0}{2}: {3}\n\nValue: {4}", style.aroundAttribute,
                                 attribute.name, attribute.required ? " (required)" : "",
                                 attribute.doc, ValueText(attribute, style));
  const std::string meaning = KindOf(attribute.kind, style).meaning;
  text += meaning.empty() ? "." : fmt::format(" ({}).", meaning);
  for (const ConditionT& condition : element.conditions) {
    if (Mentions(condition, attribute.name)) text += "\n\n" + ConditionSentence(condition, style);
  }
  return text;
}

std::string PlaceOf(const Occurrence& name) {
  return fmt::format("{}, line {}", FileNameOf(std::string(name.Path())),
                     name.manifest->source.At(name.span.begin).line);
}

std::string NameHover(const std::vector<Occurrence>& names, const Occurrence& name) {
  std::string declarations;
  std::size_t uses = 0;
  for (const Occurrence* each : SameName(names, name)) {
    if (each->isDeclaration) {
      declarations += fmt::format("\n\nDeclared in {}.", PlaceOf(*each));
    } else {
      ++uses;
    }
  }
  if (declarations.empty()) declarations = "\n\nNothing that is read here declares it.";
  const std::string used =
      uses > 0
          ? fmt::format("\n\nReferred to {}.", uses == 1 ? "once" : fmt::format("{} times", uses))
          : "";
  return Described(name) + declarations + used;
}

}  // namespace

std::optional<HoverText> HoverAt(const Manifest& manifest, std::size_t offset,
                                 const std::vector<Occurrence>& names, bool asMarkdown) {
  const NameStyle& style = asMarkdown ? kMarkdownStyle : kPlainStyle;
  const Cursor cursor = CursorAt(manifest, offset);
  switch (cursor.where) {
    case Cursor::Where::kElementName:
    case Cursor::Where::kEndTagName:
      if (cursor.element == nullptr) return std::nullopt;
      return HoverText{cursor.word, ElementHover(*cursor.element, style)};
    case Cursor::Where::kAttributeName:
      if (cursor.described == nullptr) return std::nullopt;
      return HoverText{cursor.word, AttributeHover(*cursor.element, *cursor.described, style)};
    case Cursor::Where::kValue:
      if (cursor.described == nullptr) return std::nullopt;
      if (const Occurrence* const name = NameAt(names, manifest.source.Path(), offset))
        return HoverText{cursor.word, NameHover(names, *name)};
      return HoverText{cursor.word, AttributeHover(*cursor.element, *cursor.described, style)};
    case Cursor::Where::kNowhere:
    case Cursor::Where::kContent:
      break;
  }
  return std::nullopt;
}

}  // namespace tool::lsp
