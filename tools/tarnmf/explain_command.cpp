// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/explain_command.h"

#include <charconv>
#include <fmt/format.h>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "tarnmf/error_text.h"

#include "check/names.h"
#include "check/rule_names.h"
#include "check/rules.h"
#include "check/wording.h"
#include "grammar/manifest.h"
#include "tools/tarnmf/grammar_json.h"
#include "tools/tarnmf/grammar_text.h"
#include "tools/tarnmf/rule_json.h"
#include "tools/tarnmf/rule_text.h"

namespace tool {
namespace {

using namespace tarnmf::check;
using tarnmf::grammar::AttributeT;
using tarnmf::grammar::ElementT;

// A code of the library. Others mean whatever the platform says.
std::optional<BtkErrorT> CodeNamed(std::string_view text) {
  int number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  const auto code = static_cast<BtkErrorT>(number);
  const std::string_view name = tarnmf::DescribeError(code).name;
  return name != tarnmf::DescribeError(static_cast<BtkErrorT>(-1)).name ? std::optional(code)
                                                                        : std::nullopt;
}

void OfferElements(const ElementT& element, CloseNames& names, std::set<const ElementT*>& seen) {
  if (!seen.insert(&element).second) return;
  names.Offer(element.name);
  for (const ElementT* child : element.children)
    OfferElements(*child, names, seen);
}

[[noreturn]] void RefuseSubject(const std::string& subject) {
  CloseNames names = CloseRules(subject);
  std::set<const ElementT*> seen;
  OfferElements(tarnmf::grammar::kDocument, names, seen);
  throw std::invalid_argument(fmt::format("there is no rule, code or element \"{}\"{}", subject,
                                          DidYouMean(names.Best(), Quoted)));
}

const AttributeT& RequireAttribute(const ElementT& element, std::string_view name) {
  if (const AttributeT* attribute = AttributeNamed(element, name)) return *attribute;
  CloseNames names(name);
  for (const AttributeT& attribute : element.attributes)
    names.Offer(attribute.name);
  throw std::invalid_argument(fmt::format("<{}> has no attribute \"{}\"{}", element.name, name,
                                          DidYouMean(names.Best(), Quoted)));
}

std::string AsForm(const char* kind, Json explained) {
  return FormText(json_format::kExplain, {{kind, std::move(explained)}});
}

std::string Explain(const std::string& subject, bool json) {
  if (const std::optional<Rule> rule = RuleNamed(subject)) {
    const RuleT& described = Describe(*rule);
    return json ? AsForm("rule", RuleJson(described)) : RuleText(described);
  }
  if (const std::optional<BtkErrorT> code = CodeNamed(subject))
    return json ? AsForm("code", CodeJson(*code)) : CodeText(*code);
  const std::size_t slash = subject.find('/');
  const ElementT* const element = ElementNamed(subject.substr(0, slash));
  if (element == nullptr) RefuseSubject(subject.substr(0, slash));
  if (slash == subject.npos)
    return json ? AsForm("element", ElementJson(*element)) : ElementText(*element);
  const AttributeT& attribute = RequireAttribute(*element, subject.substr(slash + 1));
  return json ? AsForm("attribute", AttributeOfElementJson(*element, attribute))
              : AttributeText(*element, attribute);
}

}  // namespace

int RunExplain(const ExplainOptions& options) {
  fmt::print("{}", options.page ? RulesPage() : Explain(options.subject, options.json));
  return 0;
}

}  // namespace tool
