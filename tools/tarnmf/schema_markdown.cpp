// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/schema_markdown.h"

#include <fmt/format.h>

#include "tools/tarnmf/grammar_elements.h"
#include "tools/tarnmf/grammar_sentences.h"

namespace tool {
namespace {

using namespace tarnmf::grammar;

std::string KindTable() {
  std::string text = "| kind of value | written as |\n|---|---|\n";
  for (int kind = 0; kind <= static_cast<int>(ValueKind::kRefused); ++kind) {
    const auto [name, meaning] = KindOf(static_cast<ValueKind>(kind), kMarkdownStyle);
    if (!meaning.empty()) text += fmt::format("| {} | {} |\n", name, meaning);
  }
  return text;
}

std::string AttributeTable(const ElementT& element) {
  if (element.attributes.empty()) return "";
  std::string text = fmt::format("\n| `{}` | value | meaning |\n|---|---|---|\n", element.name);
  for (const AttributeT& attribute : element.attributes) {
    text +=
        fmt::format("| `{}` | {}{} | {} |\n", attribute.name, ValueText(attribute, kMarkdownStyle),
                    attribute.required ? "; required" : "", attribute.doc);
  }
  return text;
}

std::string Part(const ElementT& element) {
  std::string prose = element.doc;
  for (const std::string& sentence : ContentSentences(element, kMarkdownStyle))
    prose += " " + sentence;
  std::string conditions;
  for (const ConditionT& condition : element.conditions)
    conditions += (conditions.empty() ? "\n" : " ") + ConditionSentence(condition, kMarkdownStyle);
  if (!conditions.empty()) conditions += "\n";
  return fmt::format("\n### `{}`\n\n{}\n{}{}", element.name, prose, AttributeTable(element),
                     conditions);
}

}  // namespace

std::string MarkdownSchema() {
  std::string text = fmt::format("### `values`\n\n{}", KindTable());
  for (const ElementT* element : GrammarElements())
    text += Part(*element);
  return text;
}

}  // namespace tool
