// SPDX-License-Identifier: Apache-2.0
// The grammar in sentences: what "tarnmf explain" and the tables of the documentation say alike.
#ifndef TOOLS_TARNMF_GRAMMAR_SENTENCES_H
#define TOOLS_TARNMF_GRAMMAR_SENTENCES_H

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "grammar/grammar.h"

namespace tool {

// How names are set off from the words around them.
struct NameStyle {
  std::string_view beforeElement;
  std::string_view afterElement;
  std::string_view aroundAttribute;
  std::string_view aroundPair;  // by="anyone"
  std::string_view aroundWord;
};
inline constexpr NameStyle kPlainStyle = {"<", ">", "\"", "", ""};
inline constexpr NameStyle kMarkdownStyle = {"`", "`", "`", "`", "`"};

std::string ElementList(std::span<const tarnmf::grammar::ElementT* const> elements,
                        const NameStyle& style);

// What the kind of value is called and how it is written; the meaning is empty where the name says
// it all.
struct KindText {
  std::string name;
  std::string meaning;
};
KindText KindOf(tarnmf::grammar::ValueKind kind, const NameStyle& style);

// The name of the kind, or the words of a keyword.
std::string ValueText(const tarnmf::grammar::AttributeT& attribute, const NameStyle& style);

// What the element holds, and whether it has attributes.
std::vector<std::string> ContentSentences(const tarnmf::grammar::ElementT& element,
                                          const NameStyle& style);

// Whether the condition says something about the attribute.
bool Mentions(const tarnmf::grammar::ConditionT& condition, std::string_view attribute);
std::string ConditionSentence(const tarnmf::grammar::ConditionT& condition, const NameStyle& style);

}  // namespace tool

#endif  // TOOLS_TARNMF_GRAMMAR_SENTENCES_H
