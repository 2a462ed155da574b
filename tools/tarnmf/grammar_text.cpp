// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/grammar_text.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <span>
#include <string_view>
#include <vector>

#include "check/names.h"
#include "tools/tarnmf/grammar_sentences.h"

namespace tool {
namespace {

using namespace tarnmf::grammar;

std::string ParentsText(const ElementT& element) {
  const std::vector<const ElementT*> parents = tarnmf::check::ParentsOf(element);
  const bool isRoot = std::any_of(parents.begin(), parents.end(),
                                  [](const ElementT* parent) { return parent->name[0] == '\0'; });
  return isRoot ? "It is the root of a document."
                : fmt::format("It stands in {}.", ElementList(parents, kPlainStyle));
}

// How the values are written.
std::string KindsText(std::span<const AttributeT> attributes) {
  std::set<ValueKind> kinds;
  for (const AttributeT& attribute : attributes)
    kinds.insert(attribute.kind);
  std::string text;
  for (const ValueKind kind : kinds) {
    const auto [name, meaning] = KindOf(kind, kPlainStyle);
    if (!meaning.empty()) text += fmt::format("  {}: {}\n", name, meaning);
  }
  return text.empty() ? text : "\nValues:\n" + text;
}

}  // namespace

std::string ElementText(const ElementT& element) {
  std::string text =
      fmt::format("<{}>: {}\n\n{}\n", element.name, element.doc, ParentsText(element));
  for (const std::string& sentence : ContentSentences(element, kPlainStyle))
    text += sentence + "\n";
  if (!element.attributes.empty()) text += "\nAttributes:\n";
  for (const AttributeT& attribute : element.attributes) {
    text += fmt::format("  {}{}: {}\n      {}\n", attribute.name,
                        attribute.required ? " (required)" : "", ValueText(attribute, kPlainStyle),
                        attribute.doc);
  }
  if (!element.conditions.empty()) text += "\nConditions:\n";
  for (const ConditionT& condition : element.conditions)
    text += fmt::format("  {}\n", ConditionSentence(condition, kPlainStyle));
  text += KindsText(element.attributes);
  return text;
}

std::string AttributeText(const ElementT& element, const AttributeT& attribute) {
  std::string text = fmt::format("\"{}\" of <{}>{}: {}\n\nValue: {}.\n", attribute.name,
                                 element.name, attribute.required ? " (required)" : "",
                                 attribute.doc, ValueText(attribute, kPlainStyle));
  for (const ConditionT& condition : element.conditions) {
    if (Mentions(condition, attribute.name))
      text += ConditionSentence(condition, kPlainStyle) + "\n";
  }
  text += KindsText({&attribute, 1});
  return text;
}

}  // namespace tool
