// The heads of the names of a sorted array: of each name eight bytes as a number, in which a
// bisection needs neither the names nor their comparator.
#ifndef REPOSITORY_NAME_HEADS_H
#define REPOSITORY_NAME_HEADS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include "support/growable_array.h"

namespace tarnmf {

// Elements from `first` up to, but without, `last`.
struct HeadRange {
  std::int32_t first;
  std::int32_t last;
};

// A head is made of the bytes after a prefix that most of the names share. A name that does not
// begin with the prefix has the least or the greatest head, as it sorts before or after the prefix.
// So names in the order of their bytes have ascending heads, whatever the prefix is.
class NameHeads {
 public:
  // Where names with the head of `name` are if the names are in the order of their bytes; empty,
  // and at the place where it would be inserted, when there are none. `name` may be null.
  HeadRange Guess(const char* name) const {
    const Head sought = name != nullptr ? HeadOf(name) : 0;
    const std::int32_t first = FirstNotBelow(sought);
    return {first, EndOfRun(first, sought)};
  }

  // Makes room for one more head; false when out of memory.
  [[nodiscard]] bool ReserveOne() { return heads_.ReserveMore(1); }

  // REQUIRES: room was made before.
  void InsertReserved(std::int32_t place, const char* name) {
    const Head head = HeadOf(name);
    heads_.InsertReserved(place, head);
    staleness_ += head == kBelowPrefix || head == kAbovePrefix ? kStrangerWeight : 1;
  }

  // Whether the prefix ought to be chosen anew, as the number of names has doubled, or sooner when
  // many of the new names do not share it. Costs as much time as inserting has cost since the last
  // time, since this is the one place where all names are looked at.
  bool IsStale() const { return staleness_ > heads_.Count() / 2; }

  // Chooses the prefix anew. `nameAt(index)` returns a name, which must stay where it is. A few
  // names at either end may lack the prefix, so that a few strange names do not spoil it for all.
  template <class NameAt>
  void Renew(NameAt nameAt) {
    const std::int32_t count = heads_.Count();
    const std::int32_t left = count / kStrangersAtEachEnd;
    prefix_ = nameAt(left);
    prefixLength_ = CommonLength(prefix_, nameAt(count - 1 - left));
    for (std::int32_t i = 0; i < count; ++i)
      heads_[i] = HeadOf(nameAt(i));
    staleness_ = 0;
  }

 private:
  using Head = std::uint64_t;
  static constexpr Head kBelowPrefix = 0;
  static constexpr Head kAbovePrefix = std::numeric_limits<Head>::max();
  static constexpr std::int32_t kStrangerWeight = 4;
  static constexpr std::int32_t kStrangersAtEachEnd = 16;  // one in so many

  static std::size_t CommonLength(const char* left, const char* right) {
    std::size_t length = 0;
    while (left[length] != '\0' && left[length] == right[length])
      ++length;
    return length;
  }

  // Short names are filled up with zeros.
  Head HeadOf(const char* name) const {
    const int order = std::strncmp(name, prefix_, prefixLength_);
    if (order != 0) return order < 0 ? kBelowPrefix : kAbovePrefix;
    name += prefixLength_;
    Head head = 0;
    for (int shift = 56; shift >= 0 && *name != '\0'; shift -= 8)
      head |= Head{static_cast<unsigned char>(*name++)} << shift;
    return head;
  }

  // Halves without a branch to be predicted.
  std::int32_t FirstNotBelow(Head sought) const {
    const Head* first = heads_.begin();
    for (std::int32_t count = heads_.Count(); count > 0;) {
      const std::int32_t half = (count + 1) / 2;
      first += first[half - 1] < sought ? half : 0;
      count -= half;
    }
    return static_cast<std::int32_t>(first - heads_.begin());
  }

  // Most runs are short: looks ahead in growing steps.
  std::int32_t EndOfRun(std::int32_t first, Head sought) const {
    const std::int32_t count = heads_.Count();
    std::int32_t step = 1;
    std::int32_t last = first;
    while (last < count && heads_[last] == sought) {
      first = last;
      last += step;
      step *= 2;
    }
    const Head* const begin = heads_.begin();
    const Head* const end = std::upper_bound(begin + first, begin + std::min(last, count), sought);
    return static_cast<std::int32_t>(end - begin);
  }

  GrowableArray<Head, 32> heads_;
  const char* prefix_ = "";
  std::size_t prefixLength_ = 0;
  std::int32_t staleness_ = 0;
};

}  // namespace tarnmf

#endif  // REPOSITORY_NAME_HEADS_H
