// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/grammar_sentences.h"

#include <algorithm>
#include <fmt/format.h>

#include "grammar/words.h"

namespace tool {
namespace {

using namespace tarnmf::grammar;

void Append(std::string& list, std::string_view text) {
  if (!list.empty()) list += ", ";
  list += text;
}

std::string WordList(const Words& words, const NameStyle& style) {
  std::string list;
  for (const Word& word : words.list)
    Append(list, fmt::format("{0}{1}{0}", style.aroundWord, word.text));
  return list;
}

// "by=anyone" as by="anyone".
std::string Attribute(std::string_view name, const NameStyle& style) {
  const std::size_t equals = name.find('=');
  if (equals == name.npos) return fmt::format("{0}{1}{0}", style.aroundAttribute, name);
  return fmt::format("{0}{1}=\"{2}\"{0}", style.aroundPair, name.substr(0, equals),
                     name.substr(equals + 1));
}

std::string AttributeList(std::string_view names, const NameStyle& style) {
  std::string list;
  while (!names.empty()) {
    const std::size_t end = std::min(names.find(' '), names.size());
    Append(list, Attribute(names.substr(0, end), style));
    names.remove_prefix(std::min(end + 1, names.size()));
  }
  return list;
}

std::string FormSentence(const ElementT& element) {
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

std::string TextSentence(Content content, const NameStyle& style) {
  switch (content) {
    case Content::kElements:
      return "";
    case Content::kPreload:
      return "It holds no elements.";
    case Content::kSide:
      return fmt::format("With {} nothing at all may stand inside, not even a blank or a comment.",
                         Attribute("moduleref", style));
    case Content::kArgument:
      return "It holds one text at most: no comment, CDATA section or element.";
    case Content::kValue:
      return "It holds a text, which comes first: what stands after a comment, a CDATA section or "
             "an element is lost.";
    case Content::kNothing:
      return "Nothing may stand inside, not even a blank.";
  }
  return "";
}

}  // namespace

std::string ElementList(std::span<const ElementT* const> elements, const NameStyle& style) {
  std::string list;
  for (const ElementT* element : elements)
    Append(list, fmt::format("{}{}{}", style.beforeElement, element->name, style.afterElement));
  return list;
}

KindText KindOf(ValueKind kind, const NameStyle& style) {
  switch (kind) {
    case ValueKind::kKeyword:
      return {"keyword", "one of the words given, in any letter case"};
    case ValueKind::kBoolean:
      return {"boolean", WordList(kBooleanWords, style) + ", in any letter case"};
    case ValueKind::kDecimal:
      return {"number",
              "decimal, within 32 bits, shorter than 16 characters; what follows the digits is not "
              "looked at"};
    case ValueKind::kDecimal16:
      return {"small number", "0 to 32767, written like a number"};
    case ValueKind::kUniqueId:
      return {"id", "36 characters (8-4-4-4-12 hexadecimal digits) or 32 hexadecimal digits"};
    case ValueKind::kText:
      return {"text", "any characters, or none"};
    case ValueKind::kNonEmptyText:
      return {"text, not empty", "at least one character"};
    case ValueKind::kWordList:
      return {"list of texts", "separated by semicolons, at least one"};
    case ValueKind::kVersion:
      return {"the number 1", ""};
    case ValueKind::kAddressBits:
      return {"32 or 64", ""};
    case ValueKind::kIgnored:
      return {"any text, not read", ""};
    case ValueKind::kRefused:
      return {"none, always refused", ""};
  }
  return {};
}

std::string ValueText(const AttributeT& attribute, const NameStyle& style) {
  if (attribute.kind == ValueKind::kKeyword) return WordList(*attribute.words, style);
  return KindOf(attribute.kind, style).name;
}

std::vector<std::string> ContentSentences(const ElementT& element, const NameStyle& style) {
  std::vector<std::string> sentences;
  if (!element.children.empty())
    sentences.push_back(fmt::format("It holds {}.", ElementList(element.children, style)));
  for (const std::string& sentence :
       {FormSentence(element), TextSentence(element.content, style)}) {
    if (!sentence.empty()) sentences.push_back(sentence);
  }
  return sentences;
}

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

std::string ConditionSentence(const ConditionT& condition, const NameStyle& style) {
  const int code = condition.code;
  switch (condition.kind) {
    case ConditionT::kNeeds:
      return fmt::format("{} needs {} beside it (else code {}).", Attribute(condition.a, style),
                         Attribute(condition.b, style), code);
    case ConditionT::kExcludes:
      return fmt::format("{} cannot stand beside {} (code {}).", Attribute(condition.a, style),
                         Attribute(condition.b, style), code);
    case ConditionT::kOneOf:
      return fmt::format("At least one of {} is required (else code {}).",
                         AttributeList(condition.a, style), code);
  }
  return "";
}

}  // namespace tool
