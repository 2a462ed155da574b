#include "tools/tarnmf/schema_markdown.h"

#include <fmt/format.h>
#include <string_view>

#include "tools/tarnmf/grammar_elements.h"

namespace tool {
namespace {

using tarnmf::grammar::AttributeForm;
using tarnmf::grammar::AttributeT;
using tarnmf::grammar::ConditionT;
using tarnmf::grammar::Content;
using tarnmf::grammar::ElementT;
using tarnmf::grammar::ValueKind;
using tarnmf::grammar::Word;

std::string WordsText(const tarnmf::grammar::Words& words) {
  std::string text;
  for (const Word& word : words.list)
    text += fmt::format("{}`{}`", text.empty() ? "" : ", ", word.text);
  return text;
}

std::string ValueText(const AttributeT& attribute) {
  switch (attribute.kind) {
    case ValueKind::kKeyword:
      return WordsText(*attribute.words);
    case ValueKind::kBoolean:
      return "boolean";
    case ValueKind::kDecimal:
      return "number";
    case ValueKind::kDecimal16:
      return "small number";
    case ValueKind::kUniqueId:
      return "id";
    case ValueKind::kText:
      return "text";
    case ValueKind::kNonEmptyText:
      return "text, not empty";
    case ValueKind::kWordList:
      return "words separated by `;`";
    case ValueKind::kVersion:
      return "`1`";
    case ValueKind::kAddressBits:
      return "`32`, `64`";
    case ValueKind::kIgnored:
      return "any text";
    case ValueKind::kRefused:
      return "none";
  }
  return "";
}

std::string FormText(const ElementT& element) {
  switch (element.form) {
    case AttributeForm::kRequired:
      for (const AttributeT& attribute : element.attributes) {
        if (attribute.required) return "";
      }
      return "At least one attribute is required.";
    case AttributeForm::kOptional:
      return "";
    case AttributeForm::kNone:
      return "It has no attributes.";
    case AttributeForm::kIgnored:
      return "Attributes are admitted, but not looked at.";
  }
  return "";
}

std::string ContentText(const ElementT& element) {
  switch (element.content) {
    case Content::kElements:
      return "";
    case Content::kPreload:
      return "It holds no elements.";
    case Content::kSide:
      return "With `moduleref` nothing at all may stand inside, not even a blank or a comment.";
    case Content::kArgument:
      return "It holds one text at most: no comment, CDATA section or element.";
    case Content::kValue:
      return "It holds a text, which comes first: what stands after a comment, a CDATA section "
             "or an element is lost.";
    case Content::kNothing:
      return "Nothing may stand inside, not even a blank.";
  }
  return "";
}

std::string ChildrenText(const ElementT& element) {
  std::string text;
  for (const ElementT* child : element.children)
    text += fmt::format("{}`{}`", text.empty() ? "Holds " : ", ", child->name);
  return text.empty() ? text : text + ".";
}

// "by=anyone" as `by="anyone"`.
std::string Named(std::string_view attribute) {
  const std::size_t equals = attribute.find('=');
  if (equals == std::string_view::npos) return fmt::format("`{}`", attribute);
  return fmt::format("`{}=\"{}\"`", attribute.substr(0, equals), attribute.substr(equals + 1));
}

std::string ListText(std::string_view attributes) {
  std::string text;
  while (!attributes.empty()) {
    const std::size_t end = std::min(attributes.find(' '), attributes.size());
    text += (text.empty() ? "" : ", ") + Named(attributes.substr(0, end));
    attributes.remove_prefix(std::min(end + 1, attributes.size()));
  }
  return text;
}

std::string ConditionText(const ConditionT& condition) {
  switch (condition.kind) {
    case ConditionT::kNeeds:
      return fmt::format("{} needs {}.", Named(condition.a), Named(condition.b));
    case ConditionT::kExcludes:
      return fmt::format("{} cannot stand beside {}.", Named(condition.a), Named(condition.b));
    case ConditionT::kOneOf:
      return fmt::format("At least one of {} is required.", ListText(condition.a));
  }
  return "";
}

std::string Table(const ElementT& element) {
  if (element.attributes.empty()) return "";
  std::string text = fmt::format("\n| `{}` | value | meaning |\n|---|---|---|\n", element.name);
  for (const AttributeT& attribute : element.attributes) {
    text += fmt::format("| `{}` | {}{} | {} |\n", attribute.name, ValueText(attribute),
                        attribute.required ? "; required" : "", attribute.doc);
  }
  return text;
}

std::string Part(const ElementT& element) {
  std::string prose = element.doc;
  for (const std::string& sentence :
       {ChildrenText(element), FormText(element), ContentText(element)}) {
    if (!sentence.empty()) prose += " " + sentence;
  }
  std::string conditions;
  for (const ConditionT& condition : element.conditions)
    conditions += (conditions.empty() ? "\n" : " ") + ConditionText(condition);
  if (!conditions.empty()) conditions += "\n";
  return fmt::format("### `{}`\n\n{}\n{}{}", element.name, prose, Table(element), conditions);
}

}  // namespace

std::string MarkdownSchema() {
  std::string text;
  for (const ElementT* element : GrammarElements())
    text += (text.empty() ? "" : "\n") + Part(*element);
  return text;
}

}  // namespace tool
