// The heads of the names of a sorted array: of each name a few characters as a number of eight bytes,
// so that a bisection need not touch the names themselves.
#ifndef REPOSITORY_NAME_HEADS_H
#define REPOSITORY_NAME_HEADS_H

#include <cstddef>
#include <cstdint>
#include <limits>

#include "support/growable_array.h"

namespace tarnmf {

// Elements from `first` up to, but without, `last`.
struct IndexRange {
  std::int32_t first;
  std::int32_t last;
};

// A head is made of the characters after a prefix that most of the names share. A name that does not
// begin with the prefix has the least or the greatest head, as it sorts before or after the prefix.
// So names in the order of their bytes have ascending heads, whatever the prefix is, and a few
// strange names do not spoil the heads of all others.
class NameHeads {
 public:
  // Where to look for `name`, which may be null: the names with the same head, when there are none
  // the one before them. All names while the heads are of no use. It is a guess: true only of names
  // in the order of their bytes.
  IndexRange Guess(const char* name) const;

  // Makes room for one more head; false when out of memory.
  [[nodiscard]] bool ReserveOne() { return heads_.ReserveMore(1); }

  // REQUIRES: room was made before.
  void InsertReserved(std::int32_t place, const char* name);

  // Whether the prefix ought to be chosen anew: the number of names has doubled since the last time,
  // or many of the new names do not share it. Spread over the names that were inserted, a renewal
  // makes a few heads for each.
  bool IsStale() const { return staleness_ > heads_.Count() / 2; }

  // Chooses the prefix anew. `nameAt(index)` returns a name, which must stay where it is.
  // REQUIRES: there are names.
  template <class NameAt>
  void Renew(NameAt nameAt) {
    const std::int32_t count = heads_.Count();
    const std::int32_t strangers = count / kStrangersAtEachEnd;
    SetPrefix(nameAt(strangers), nameAt(count - 1 - strangers));
    for (std::int32_t i = 0; i < count; ++i)
      heads_[i] = HeadOf(nameAt(i));
    areUseful_ = TellNamesApart();
    staleness_ = 0;
  }

 private:
  using Head = std::uint64_t;
  static constexpr Head kBelowPrefix = 0;
  static constexpr Head kAbovePrefix = std::numeric_limits<Head>::max();
  static constexpr std::int32_t kStrangerWeight = 4;
  static constexpr std::int32_t kStrangersAtEachEnd = 16;  // one in so many may lack the prefix

  void SetPrefix(const char* left, const char* right);
  Head HeadOf(const char* name) const;
  bool TellNamesApart() const;
  std::int32_t LastNotAbove(Head sought) const;
  std::int32_t StartOfRun(std::int32_t last) const;

  GrowableArray<Head, 32> heads_;
  const char* prefix_ = "";  // not terminated
  std::size_t prefixLength_ = 0;
  std::int32_t staleness_ = 0;
  bool areUseful_ = false;
};

}  // namespace tarnmf

#endif  // REPOSITORY_NAME_HEADS_H
