// SPDX-License-Identifier: Apache-2.0
// The heads of the names of a sorted array: of each name a few characters as a number of eight bytes,
// so that a bisection need not touch the names themselves.
#ifndef REPOSITORY_NAME_HEADS_H
#define REPOSITORY_NAME_HEADS_H

#include <cstdint>

#include "repository/name_code.h"
#include "repository/name_prefixes.h"
#include "support/growable_array.h"

namespace tarnmf {

// Elements from `first` up to, but without, `last`.
struct IndexRange {
  std::int32_t first;
  std::int32_t last;
};

// A head is made of a name's place among the prefixes and a code of the characters after its prefix.
// So names in the order of their bytes have ascending heads, whatever the prefixes are, and a few
// strange names do not spoil the heads of all others.
class NameHeads {
 public:
  // Where to look for `name`, which may be null: the names with the same head, when there are none
  // the place between two names where it belongs. All names while the heads are of no use. Names that
  // are not in the order of their bytes make it a guess.
  IndexRange Guess(const char* name) const;

  // Makes room for one more head; false when out of memory.
  [[nodiscard]] bool ReserveOne() { return heads_.ReserveMore(1); }

  // REQUIRES: room was made before.
  void InsertReserved(std::int32_t place, const char* name);

  // Whether the prefixes ought to be chosen anew: the number of names has doubled since the last time,
  // or many of the new names have none of them. Spread over the names that were inserted, a renewal
  // makes a few heads for each.
  bool IsStale() const { return staleness_ > heads_.Count() / 2; }

  // Chooses the prefixes anew.
  // REQUIRES: there are as many names as heads, and at least one.
  void Renew(const SortedNames& names);

 private:
  using Head = NameCode::Code;
  static constexpr std::int32_t kStrangerWeight = 4;

  Head HeadOf(const char* name) const;
  bool HasPrefix(Head head) const;
  bool TellNamesApart() const;
  std::int32_t LastNotAbove(Head sought) const;
  std::int32_t StartOfRun(std::int32_t last) const;

  GrowableArray<Head, 32> heads_;
  NamePrefixes prefixes_;
  NameCode code_;
  unsigned placeBits_ = 2;  // that a place takes
  std::int32_t staleness_ = 0;
  bool areUseful_ = false;
};

}  // namespace tarnmf

#endif  // REPOSITORY_NAME_HEADS_H
