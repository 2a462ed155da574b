// SPDX-License-Identifier: Apache-2.0
#include "check/given.h"

#include <algorithm>
#include <cassert>

#include "check/names.h"
#include "check/values.h"

namespace tarnmf::check {

GivenAttributes::GivenAttributes(const Document& document, NodeId node,
                                 const grammar::ElementT& element)
    : element_(element) {
  assert(element.attributes.size() <= kMostAttributes);
  first_.fill(kNone);
  if (element.form == grammar::AttributeForm::kIgnored) return;
  known_.reserve(document[node].attributeCount);
  for (const Attribute& attribute : document.AttributesOf(node)) {
    const std::string_view name = document.Name(attribute);
    const grammar::AttributeT* const described = AttributeNamed(element, name);
    if (described == nullptr) {
      unknown_.push_back({&attribute, CloseNames(name)});
      continue;
    }
    std::size_t& first = first_[static_cast<std::size_t>(described - element.attributes.data())];
    const bool isFirst = first == kNone;
    if (isFirst) first = known_.size();
    known_.push_back({&attribute, described, isFirst ? nullptr : known_[first].written});
  }
  const auto offer = [&](CloseNames& meant, void (CloseNames::*how)(std::string_view)) {
    for (std::size_t i = 0; i < element.attributes.size(); ++i) {
      const grammar::AttributeT& candidate = element.attributes[i];
      if (candidate.kind != grammar::ValueKind::kRefused && first_[i] == kNone)
        (meant.*how)(candidate.name);
    }
  };
  for (Unknown& unknown : unknown_) {
    offer(unknown.meant, &CloseNames::Offer);
    offer(unknown.meant, &CloseNames::OfferAsLongForm);
    for (const std::string_view name : unknown.meant.Best())
      ++meant_[IndexOf(name)];
  }
}

// ---- What is there -----------------------------------------------------------------------------

std::size_t GivenAttributes::IndexOf(std::string_view name) const {
  const auto& attributes = element_.attributes;
  const auto attribute =
      std::find_if(attributes.begin(), attributes.end(), [&](const grammar::AttributeT& candidate) {
        return candidate.name[0] == name[0] && candidate.name == name;
      });
  assert(attribute != attributes.end());
  return static_cast<std::size_t>(attribute - attributes.begin());
}

const GivenAttributes::Known* GivenAttributes::FindKnown(std::string_view name) const {
  const std::size_t first = first_[IndexOf(name)];
  return first != kNone ? &known_[first] : nullptr;
}

const Attribute* GivenAttributes::Find(std::string_view name) const {
  const Known* const known = FindKnown(name);
  return known != nullptr ? known->written : nullptr;
}

GivenAttributes::State GivenAttributes::StateOf(std::string_view name) const {
  if (FindKnown(name) != nullptr) return State::kGiven;
  return mayHaveMore_ || TimesMeant(name) > 0 ? State::kUncertain : State::kAbsent;
}

GivenAttributes::State GivenAttributes::StateOfTerm(std::string_view term) const {
  const std::size_t equals = term.find('=');
  const std::string_view name = term.substr(0, equals);
  const State state = StateOf(name);
  if (state != State::kGiven || equals == std::string_view::npos) return state;
  const Known& known = *FindKnown(name);
  const std::optional<std::int32_t> word = Word(name);
  if (!word) return State::kUncertain;
  const std::string wanted(term.substr(equals + 1));
  return word == ReadKeyword(wanted, *known.described->words) ? State::kGiven : State::kAbsent;
}

// ---- Values ------------------------------------------------------------------------------------

const GivenAttributes::Known* GivenAttributes::FindReadable(std::string_view name) const {
  const Known* const known = FindKnown(name);
  if (known == nullptr || !known->written->isKnown) return nullptr;
  return CodeOf(known->written->text, *known->described) == kBtkOk ? known : nullptr;
}

bool GivenAttributes::IsClear(std::string_view name) const {
  return IsAbsent(name) || FindReadable(name) != nullptr;
}

std::optional<TextValue> GivenAttributes::Text(std::string_view name) const {
  const Known* const known = FindReadable(name);
  if (known == nullptr) return {};
  return TextValue{known->written->text, known->written->value};
}

std::optional<IdValue> GivenAttributes::Id(std::string_view name) const {
  const Known* const known = FindReadable(name);
  if (known == nullptr) return {};
  return IdValue{*ReadId(known->written->text), known->written->value};
}

std::optional<std::int32_t> GivenAttributes::Number(std::string_view name) const {
  const Known* const known = FindReadable(name);
  if (known == nullptr) return {};
  return ReadDecimal(known->written->text)->number;
}

std::optional<std::int32_t> GivenAttributes::Word(std::string_view name) const {
  const Known* const known = FindReadable(name);
  if (known == nullptr) return {};
  return ReadKeyword(known->written->text, *known->described->words);
}

bool GivenAttributes::IsTrue(std::string_view name) const {
  const Known* const known = FindReadable(name);
  return known != nullptr && ReadBoolean(known->written->text).value_or(false);
}

std::optional<std::int32_t> GivenAttributes::WordOr(std::string_view name,
                                                    std::int32_t absent) const {
  return IsAbsent(name) ? std::optional(absent) : Word(name);
}

}  // namespace tarnmf::check
