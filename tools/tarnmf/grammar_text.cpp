#include "tools/tarnmf/grammar_text.h"

#include <algorithm>
#include <fmt/format.h>
#include <span>
#include <string_view>
#include <vector>

#include "check/names.h"
#include "grammar/words.h"

namespace tool {
namespace {

using namespace tarnmf::grammar;

std::string WordsText(const Words& words) {
  std::string text;
  for (const Word& word : words.list)
    text += fmt::format("{}{}", text.empty() ? "" : ", ", word.text);
  return text;
}

std::string ValueText(const AttributeT& attribute) {
  switch (attribute.kind) {
    case ValueKind::kKeyword:
      return "one of the words " + WordsText(*attribute.words);
    case ValueKind::kBoolean:
      return "one of the words " + WordsText(kBooleanWords);
    case ValueKind::kDecimal:
      return "a decimal number within 32 bits";
    case ValueKind::kDecimal16:
      return "a decimal number from 0 to 32767";
    case ValueKind::kUniqueId:
      return "an id: 36 characters with dashes, or 32 hexadecimal digits";
    case ValueKind::kText:
      return "a text";
    case ValueKind::kNonEmptyText:
      return "a text that is not empty";
    case ValueKind::kWordList:
      return "texts separated by \";\", at least one";
    case ValueKind::kVersion:
      return "the number 1";
    case ValueKind::kAddressBits:
      return "32 or 64";
    case ValueKind::kIgnored:
      return "any text; it is not read";
    case ValueKind::kRefused:
      return "none: it is refused whatever its value is";
  }
  return "";
}

std::string ContentText(Content content) {
  switch (content) {
    case Content::kElements:
    case Content::kPreload:
      return "";
    case Content::kSide:
      return "It must be empty when it names its module with \"moduleref\".";
    case Content::kArgument:
      return "It holds one text and nothing else.";
    case Content::kValue:
      return "It holds a text.";
    case Content::kNothing:
      return "It holds nothing, not even a blank.";
  }
  return "";
}

std::string List(std::span<const ElementT* const> elements) {
  std::string text;
  for (const ElementT* element : elements)
    text += fmt::format("{}<{}>", text.empty() ? "" : ", ", element->name);
  return text;
}

// Names of attributes stand alone or as "name=word".
std::string Shown(std::string_view attribute) {
  const std::size_t equals = attribute.find('=');
  if (equals == attribute.npos) return fmt::format("\"{}\"", attribute);
  return fmt::format("{}=\"{}\"", attribute.substr(0, equals), attribute.substr(equals + 1));
}

std::string ConditionText(const ConditionT& condition) {
  const int code = condition.code;
  switch (condition.kind) {
    case ConditionT::kNeeds:
      return fmt::format("{} needs {} beside it (else code {}).", Shown(condition.a),
                         Shown(condition.b), code);
    case ConditionT::kExcludes:
      return fmt::format("{} cannot stand beside {} (code {}).", Shown(condition.a),
                         Shown(condition.b), code);
    case ConditionT::kOneOf:
      return fmt::format("At least one of these is needed (else code {}): {}.", code, condition.a);
  }
  return "";
}

// Whether the condition says something about the attribute.
bool Mentions(const ConditionT& condition, std::string_view attribute) {
  for (std::string_view rest : {std::string_view(condition.a),
                                std::string_view(condition.b != nullptr ? condition.b : "")}) {
    while (!rest.empty()) {
      const std::string_view name = rest.substr(0, rest.find(' '));
      if (name.substr(0, name.find('=')) == attribute) return true;
      rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    }
  }
  return false;
}

std::string ParentsText(const ElementT& element) {
  const std::vector<const ElementT*> parents = tarnmf::check::ParentsOf(element);
  const bool isRoot = std::any_of(parents.begin(), parents.end(),
                                  [](const ElementT* parent) { return parent->name[0] == '\0'; });
  return isRoot ? "It is the root of a document." : fmt::format("It stands in {}.", List(parents));
}

}  // namespace

std::string ElementText(const ElementT& element) {
  std::string text =
      fmt::format("<{}>: {}\n\n{}\n", element.name, element.doc, ParentsText(element));
  if (!element.children.empty()) text += fmt::format("It holds {}.\n", List(element.children));
  const std::string content = ContentText(element.content);
  if (!content.empty()) text += content + "\n";
  if (element.form == AttributeForm::kIgnored) text += "Its attributes are not looked at.\n";
  if (!element.attributes.empty()) text += "\nAttributes:\n";
  for (const AttributeT& attribute : element.attributes) {
    text +=
        fmt::format("  {}{}: {}\n      {}\n", attribute.name,
                    attribute.required ? " (required)" : "", ValueText(attribute), attribute.doc);
  }
  if (!element.conditions.empty()) text += "\nConditions:\n";
  for (const ConditionT& condition : element.conditions)
    text += fmt::format("  {}\n", ConditionText(condition));
  return text;
}

std::string AttributeText(const ElementT& element, const AttributeT& attribute) {
  std::string text =
      fmt::format("\"{}\" of <{}>{}: {}\n\nIts value is {}.\n", attribute.name, element.name,
                  attribute.required ? " (required)" : "", attribute.doc, ValueText(attribute));
  for (const ConditionT& condition : element.conditions) {
    if (Mentions(condition, attribute.name)) text += ConditionText(condition) + "\n";
  }
  return text;
}

}  // namespace tool
