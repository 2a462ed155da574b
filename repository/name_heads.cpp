// SPDX-License-Identifier: Apache-2.0
#include "repository/name_heads.h"

#include <algorithm>
#include <bit>

#include "support/number_search.h"

namespace tarnmf {

IndexRange NameHeads::Guess(const char* name) const {
  if (!areUseful_ || name == nullptr) return {0, heads_.Count()};
  const Head sought = HeadOf(name);
  const std::int32_t last = LastNotAbove(sought);
  const std::int32_t place = heads_[last] > sought ? last : last + 1;
  if (heads_[last] != sought) return {place, place};
  return {last > 0 && heads_[last - 1] == sought ? StartOfRun(last) : last, place};
}

void NameHeads::InsertReserved(std::int32_t place, const char* name) {
  const Head head = HeadOf(name);
  heads_.InsertReserved(place, head);
  staleness_ += HasPrefix(head) ? 1 : kStrangerWeight;
}

void NameHeads::Renew(const SortedNames& names) {
  prefixes_.Choose(names);
  placeBits_ = static_cast<unsigned>(std::bit_width(static_cast<unsigned>(2 * prefixes_.Count())));
  code_.Learn(names, prefixes_);
  for (std::int32_t i = 0; i < names.count; ++i)
    heads_[i] = HeadOf(names[i]);
  areUseful_ = TellNamesApart();
  staleness_ = 0;
}

NameHeads::Head NameHeads::HeadOf(const char* name) const {
  const NamePrefixes::Split split = prefixes_.SplitOf(name);
  const unsigned codeBits = 64 - placeBits_;
  return Head{split.place} << codeBits | code_.Of(split.rest, codeBits);
}

bool NameHeads::HasPrefix(Head head) const {
  return (head >> (64 - placeBits_) & 1) != 0;
}

// Heads that do not ascend belong to another order than that of the bytes. Of equal ones a few are
// left: a search among them saves too few steps to be worth its time.
bool NameHeads::TellNamesApart() const {
  constexpr std::int32_t kMany = 32;
  std::int32_t distinct = 1;
  for (std::int32_t i = 1; i < heads_.Count(); ++i) {
    if (heads_[i - 1] > heads_[i]) return false;
    distinct += heads_[i - 1] != heads_[i] ? 1 : 0;
  }
  return distinct >= std::min(kMany, heads_.Count() / 2);
}

// The one before the first that is above.
std::int32_t NameHeads::LastNotAbove(Head sought) const {
  return FirstNotBefore(heads_.begin() + 1, heads_.Count(),
                        [sought](Head head) { return head <= sought; });
}

// Most runs are short: looks back in growing steps.
std::int32_t NameHeads::StartOfRun(std::int32_t last) const {
  const Head* const begin = heads_.begin();
  const Head sought = heads_[last];
  std::int32_t first = last;
  for (std::int32_t step = 1; first > 0 && heads_[first - 1] == sought; step *= 2) {
    last = first - 1;
    first = std::max(last - step, 0);
    if (heads_[first] != sought) break;
  }
  return static_cast<std::int32_t>(std::lower_bound(begin + first, begin + last, sought) - begin);
}

}  // namespace tarnmf
