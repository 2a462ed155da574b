// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/rule_text.h"

#include <fmt/format.h>
#include <string_view>

#include "tarnmf/error_text.h"

#include "check/settings.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using namespace tarnmf::check;

std::string SeverityText(const RuleT& rule) {
  const std::string_view severity = LevelName(rule.severity);
  return rule.codes[0] == '\0' ? std::string(severity)
                               : fmt::format("{}, code {}", severity, rule.codes);
}

const char* FixText(Fix fix) {
  switch (fix) {
    case Fix::kNone:
      return "";
    case Fix::kOffered:
      return "A correction is suggested where one is known.";
    case Fix::kSafe:
      return "--fix corrects it where that is certain.";
  }
  return "";
}

std::string Indented(std::string_view text) {
  std::string indented;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n'));
    if (!line.empty()) indented += "    ";
    indented += line;
    indented += '\n';
    text.remove_prefix(std::min(line.size() + 1, text.size()));
  }
  return indented;
}

// Whether the texts of a rule's codes have this number.
bool HasCode(const RuleT& rule, BtkErrorT code) {
  const std::string number = std::to_string(static_cast<int>(code));
  std::string_view rest = rule.codes;
  while (!rest.empty()) {
    const std::string_view word = rest.substr(0, rest.find_first_of(" ,"));
    if (word == number) return true;
    rest.remove_prefix(std::min(word.size() + 1, rest.size()));
  }
  return false;
}

// An example in a page: more than one file, or a layout file, is no XML.
std::string Fenced(std::string_view text) {
  const bool isXml = text.starts_with('<');
  return fmt::format("```{}\n{}{}```\n", isXml ? "xml" : "text", text,
                     text.ends_with('\n') ? "" : "\n");
}

std::string PageSection(const RuleT& rule) {
  std::string text = fmt::format("\n## {}\n\n*{}.* {} {}\n", rule.name, SeverityText(rule),
                                 rule.summary, rule.advice);
  if (rule.fix != Fix::kNone) text += fmt::format("\n{}\n", FixText(rule.fix));
  if (rule.wrong != nullptr) text += fmt::format("\nWrong:\n\n{}", Fenced(ExampleText(rule.wrong)));
  if (rule.right != nullptr) text += fmt::format("\nRight:\n\n{}", Fenced(ExampleText(rule.right)));
  return text;
}

}  // namespace

std::string RuleText(const RuleT& rule) {
  std::string text =
      fmt::format("{} ({})\n\n{}\n{}\n", rule.name, SeverityText(rule), rule.summary, rule.advice);
  if (rule.fix != Fix::kNone) text += fmt::format("{}\n", FixText(rule.fix));
  if (rule.wrong != nullptr) text += fmt::format("\nWrong:\n{}", Indented(ExampleText(rule.wrong)));
  if (rule.right != nullptr) text += fmt::format("\nRight:\n{}", Indented(ExampleText(rule.right)));
  return text;
}

std::string CodeText(BtkErrorT code) {
  std::string text = CodeInWords(code) + "\n";
  std::string rules;
  for (const RuleT* rule : RulesWithCode(code))
    rules += fmt::format("  {}: {}\n", rule->name, rule->summary);
  if (!rules.empty()) text += "\nWhat check tells with it:\n" + rules;
  return text;
}

std::vector<const RuleT*> RulesWithCode(BtkErrorT code) {
  std::vector<const RuleT*> rules;
  for (const RuleT& rule : Catalogue()) {
    if (HasCode(rule, code)) rules.push_back(&rule);
  }
  return rules;
}

std::string_view ExampleText(const char* example) {
  std::string_view text = example != nullptr ? example : "";
  if (text.starts_with('\n')) text.remove_prefix(1);
  return text;
}

std::string RulesPage() {
  std::string text =
      "# Rules\n\n"
      "What `tarnmf check` finds; `tarnmf explain RULE` prints one of these sections. An error is "
      "what the library refuses, or what makes it lose records; a warning is what it accepts and "
      "what cannot have been meant; an info is worth knowing. Errors cannot be switched off. "
      "[The tool](tool.md) says how warnings and infos are.\n\n"
      "An example is a manifest, or several files after their paths; the installation that is "
      "checked is `pack`. An element that stands alone is to be thought in a root element.\n\n"
      "| rule | severity | finds |\n|---|---|---|\n";
  for (const RuleT& rule : Catalogue()) {
    text += fmt::format("| [{}](#{}) | {} | {} |\n", rule.name, rule.name, SeverityText(rule),
                        rule.summary);
  }
  for (const RuleT& rule : Catalogue())
    text += PageSection(rule);
  return text;
}

}  // namespace tool
