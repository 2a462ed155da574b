// SPDX-License-Identifier: Apache-2.0
// The rules on which attributes an element has, and what they have to do with each other.
#include <algorithm>
#include <fmt/format.h>
#include <vector>

#include "check/inspection.h"
#include "check/placement.h"
#include "check/suggestions.h"
#include "check/wording.h"

namespace tarnmf::check {
namespace {

using grammar::AttributeT;
using grammar::ConditionT;
using grammar::ValueKind;
using State = GivenAttributes::State;

std::vector<std::string> QuotedNames(std::span<const AttributeT> attributes) {
  std::vector<std::string> names;
  for (const AttributeT& attribute : attributes) {
    if (attribute.kind != ValueKind::kRefused) names.push_back(Quoted(attribute.name));
  }
  return names;
}

// The attribute with the blanks before it and its closing quote.
Span WholeAttribute(const Inspection& inspection, const Attribute& attribute) {
  return WithBlanksBefore(inspection.Text(), {attribute.name.begin, attribute.value.end + 1});
}

Suggestion RemoveAttribute(const Inspection& inspection, const Attribute& attribute) {
  return Remove(WholeAttribute(inspection, attribute), Quoted(inspection.Doc().Name(attribute)));
}

// A root carries its version and nothing else, however that is broken.
bool IsRoot(const ElementAtHand& element) {
  return element.described.attributes.data() == grammar::kRootAttributes;
}

// ---- Names -------------------------------------------------------------------------------------

// What editors and other tools like to put on a root: declarations for which there is no use.
bool IsNamespaceMatter(std::string_view name) {
  return name == "xmlns" || name.starts_with("xmlns:") || name.starts_with("xsi:");
}

void CheckUnknown(Inspection& inspection, const ElementAtHand& element,
                  const GivenAttributes::Unknown& unknown) {
  const Attribute& attribute = *unknown.written;
  const std::string_view name = inspection.Doc().Name(attribute);
  const std::vector<std::string> names = QuotedNames(element.described.attributes);
  Finding& finding = inspection.Report(
      Rule::kAttributeUnknown, kBtkUnexpected, attribute.name,
      fmt::format("{} has no attribute {}; it has {}{}", inspection.Tag(element.node), Quoted(name),
                  names.empty() ? "none" : Listed(names, "and"),
                  DidYouMean(unknown.meant.Best(), Quoted)));
  if (attribute.isDefault) return;
  for (const std::string_view meant : unknown.meant.Best()) {
    finding.suggestions.push_back(Replace(attribute.name, name, std::string(meant)));
    finding.suggestions.back().safe =
        unknown.meant.IsCertain() && element.given.TimesMeant(meant) == 1;
  }
  if (!finding.suggestions.empty()) return;
  finding.suggestions.push_back(RemoveAttribute(inspection, attribute));
  finding.suggestions.back().safe = IsRoot(element) && IsNamespaceMatter(name);
}

// The words of a second list are added to those of the first. Of what is not read, only a version
// counts as given.
bool MayBeRepeated(const AttributeT& attribute) {
  switch (attribute.kind) {
    case ValueKind::kWordList:
    case ValueKind::kRefused:
      return true;
    case ValueKind::kIgnored:
      return std::string_view(attribute.name) != "version";
    default:
      return false;
  }
}

void CheckTwice(Inspection& inspection, const ElementAtHand& element,
                const GivenAttributes::Known& known) {
  if (MayBeRepeated(*known.described)) return;
  const Attribute& second = *known.written;
  Finding& finding = inspection.Report(
      Rule::kAttributeTwice, IsRoot(element) ? kBtkUnexpected : kBtkDuplicate, second.name,
      fmt::format("{} is given already, as {}: letter case makes no difference",
                  Quoted(inspection.Doc().Name(second)),
                  Quoted(inspection.Doc().Name(*known.first))));
  finding.related.push_back(inspection.RelatedTo(known.first->name, "first given here"));
  if (second.isDefault || second.text != known.first->text) return;
  if (!second.isKnown || !known.first->isKnown) return;
  finding.suggestions.push_back(Safe(RemoveAttribute(inspection, second)));
}

// ---- Attributes that are missing ---------------------------------------------------------------

void ReportMissing(Inspection& inspection, const ElementAtHand& element,
                   const AttributeT& attribute) {
  const Span name = inspection[element.node].name;
  Finding& finding = inspection.Report(
      Rule::kAttributeMissing, IsRoot(element) ? kBtkUnexpected : kBtkMissing, name,
      fmt::format("{} needs {}", inspection.Tag(element.node), Quoted(attribute.name)));
  Suggestion insertion;
  insertion.title = fmt::format("Insert {}", Quoted(attribute.name));
  insertion.safe = IsRoot(element);
  insertion.edits.push_back(
      {{name.end, name.end},
       fmt::format(" {}=\"{}\"", attribute.name, IsRoot(element) ? "1" : "")});
  finding.suggestions.push_back(std::move(insertion));
}

// An element that needs one attribute at least, whichever it is. What a side needs is told with its
// class.
void CheckAny(Inspection& inspection, const ElementAtHand& element) {
  const auto& attributes = element.described.attributes;
  const bool hasRequired = std::any_of(attributes.begin(), attributes.end(),
                                       [](const AttributeT& one) { return one.required; });
  if (element.described.form != grammar::AttributeForm::kRequired || hasRequired ||
      element.described.content == grammar::Content::kSide || !element.given.IsEmpty()) {
    return;
  }
  ReportNothingGiven(inspection, element);
}

// ---- Conditions --------------------------------------------------------------------------------

// A term of a condition as people write it: "name", or name="word".
std::string TermShown(std::string_view term) {
  const std::size_t equals = term.find('=');
  return equals == term.npos ? Quoted(term)
                             : Assigned(term.substr(0, equals), term.substr(equals + 1));
}

const Attribute& TermIn(const ElementAtHand& element, std::string_view term) {
  return *element.given.Find(term.substr(0, term.find('=')));
}

void CheckOneOf(Inspection& inspection, const ElementAtHand& element, std::string_view names,
                BtkErrorT code) {
  std::vector<std::string> shown;
  for (std::size_t begin = 0; begin < names.size();) {
    const std::size_t end = std::min(names.find(' ', begin), names.size());
    const std::string_view name = names.substr(begin, end - begin);
    if (!element.given.IsAbsent(name)) return;
    shown.push_back(Quoted(name));
    begin = end + 1;
  }
  inspection.Report(Rule::kNothingGiven, code, inspection[element.node].name,
                    fmt::format("{} needs at least one of {}", inspection.Tag(element.node),
                                Listed(shown, "and")));
}

void CheckCondition(Inspection& inspection, const ElementAtHand& element,
                    const ConditionT& condition) {
  if (condition.kind == ConditionT::kOneOf) {
    CheckOneOf(inspection, element, condition.a, condition.code);
    return;
  }
  if (element.given.StateOfTerm(condition.a) != State::kGiven) return;
  const State other = element.given.StateOfTerm(condition.b);
  const Span place = TermIn(element, condition.a).name;
  if (condition.kind == ConditionT::kNeeds && other == State::kAbsent) {
    inspection.Report(Rule::kAttributeNeeds, condition.code, place,
                      fmt::format("{} needs {}", TermShown(condition.a), TermShown(condition.b)));
  } else if (condition.kind == ConditionT::kExcludes && other == State::kGiven) {
    inspection
        .Report(Rule::kAttributeExcludes, condition.code, place,
                fmt::format("{} cannot stand beside {}", TermShown(condition.a),
                            TermShown(condition.b)))
        .related.push_back(inspection.RelatedTo(TermIn(element, condition.b).name, "given here"));
  }
}

}  // namespace

void ReportNothingGiven(Inspection& inspection, const ElementAtHand& element) {
  inspection.Report(Rule::kNothingGiven, kBtkMissing, inspection[element.node].name,
                    fmt::format("{} needs at least one of {}", inspection.Tag(element.node),
                                Listed(QuotedNames(element.described.attributes), "and")));
}

void CheckAttributes(Inspection& inspection, const ElementAtHand& element) {
  for (const GivenAttributes::Unknown& unknown : element.given.AllUnknown())
    CheckUnknown(inspection, element, unknown);
  for (const GivenAttributes::Known& known : element.given.AllKnown()) {
    CheckValue(inspection, element, known);
    if (known.first != nullptr) CheckTwice(inspection, element, known);
  }
  for (const AttributeT& attribute : element.described.attributes) {
    if (IsRequired(attribute, element.described, element.parent) &&
        element.given.IsAbsent(attribute.name)) {
      ReportMissing(inspection, element, attribute);
    }
  }
  CheckAny(inspection, element);
  for (const ConditionT& condition : element.described.conditions)
    CheckCondition(inspection, element, condition);
}

}  // namespace tarnmf::check
