// SPDX-License-Identifier: Apache-2.0
// What an element is given, seen with its description.
#ifndef CHECK_GIVEN_H
#define CHECK_GIVEN_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "check/declarations.h"
#include "check/document.h"
#include "check/suggestions.h"
#include "grammar/grammar.h"

namespace tarnmf::check {

// REQUIRES: names that are asked for are those of attributes that the element has.
class GivenAttributes {
 public:
  enum class State {
    kAbsent,
    kGiven,      // whatever its value
    kUncertain,  // it may be there, or be meant by another name
  };
  struct Known {
    const Attribute* written;
    const grammar::AttributeT* described;
    const Attribute* first;  // the one before it of the same name, if there is one
  };
  struct Unknown {
    const Attribute* written;
    CloseNames meant;  // of those that are not given
  };

  GivenAttributes(const Document& document, NodeId node, const grammar::ElementT& element);

  // In the order in which they are written. Where attributes are ignored there are none.
  const std::vector<Known>& AllKnown() const { return known_; }
  const std::vector<Unknown>& AllUnknown() const { return unknown_; }
  bool IsEmpty() const { return known_.empty() && unknown_.empty() && !mayHaveMore_; }

  // How many unknown ones this name is the closest of.
  std::size_t TimesMeant(std::string_view name) const { return meant_[IndexOf(name)]; }

  // From now on what is absent is uncertain: a document type that nobody has read may give it.
  void AdmitMore() { mayHaveMore_ = true; }

  // The first one of this name, or null.
  const Attribute* Find(std::string_view name) const;
  State StateOf(std::string_view name) const;
  bool IsGiven(std::string_view name) const { return StateOf(name) == State::kGiven; }
  bool IsAbsent(std::string_view name) const { return StateOf(name) == State::kAbsent; }
  // Whether it is known what the attribute says: it is absent, or its value can be read.
  bool IsClear(std::string_view name) const;
  // The state of "name", or of "name=word", which is absent where the value is another one.
  State StateOfTerm(std::string_view term) const;

  // Values of attributes that are given and can be read.
  std::optional<TextValue> Text(std::string_view name) const;
  std::optional<IdValue> Id(std::string_view name) const;
  std::optional<std::int32_t> Number(std::string_view name) const;
  std::optional<std::int32_t> Word(std::string_view name) const;
  bool IsTrue(std::string_view name) const;
  // The same with the number of the default for an absent one; nothing when that is uncertain.
  std::optional<std::int32_t> WordOr(std::string_view name, std::int32_t absent) const;

 private:
  const Known* FindKnown(std::string_view name) const;
  const Known* FindReadable(std::string_view name) const;
  std::size_t IndexOf(std::string_view name) const;

  static constexpr std::size_t kNone = SIZE_MAX;
  static constexpr std::size_t kMostAttributes = 16;  // that an element of the grammar has

  const grammar::ElementT& element_;
  std::vector<Known> known_;
  // By attribute of the grammar: where it stands in known_, and how often it may be meant.
  std::array<std::size_t, kMostAttributes> first_;
  std::array<std::size_t, kMostAttributes> meant_{};
  std::vector<Unknown> unknown_;
  bool mayHaveMore_ = false;
};

}  // namespace tarnmf::check

#endif  // CHECK_GIVEN_H
