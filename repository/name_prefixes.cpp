// SPDX-License-Identifier: Apache-2.0
#include "repository/name_prefixes.h"

#include <algorithm>

#include "support/bisect.h"

namespace tarnmf {

// Names that begin with the same `shared` characters.
struct NamePrefixes::Range {
  std::int32_t first;
  std::int32_t last;  // the one after them
  std::size_t shared;
};

struct NamePrefixes::Parts {
  static constexpr std::int32_t kMost = 6;
  Range ranges[kMost];
  std::int32_t count = 0;
};

// What two names in the order of their bytes share, all names between them share too.
NamePrefixes::Range NamePrefixes::RangeOf(const SortedNames& names, std::int32_t first,
                                          std::int32_t last) {
  const char* const left = names[first];
  const char* const right = names[last - 1];
  std::size_t shared = 0;
  while (left[shared] != '\0' && left[shared] == right[shared])
    ++shared;
  return {first, last, shared};
}

// The names of a range by the character after what they share, without a few that have a rare one.
// Nothing when there are many such characters: names are told apart better by what follows than by a
// longer prefix.
NamePrefixes::Parts NamePrefixes::PartsOf(const SortedNames& names, const Range& whole) {
  std::int32_t rare = (whole.last - whole.first) / 16;  // so many names may be left out
  Parts parts;
  for (std::int32_t first = whole.first; first < whole.last;) {
    const char character = names[first][whole.shared];
    const std::int32_t size = Bisect(whole.last - first, [&](std::int32_t i) {
                                return names[first + i][whole.shared] == character ? -1 : 1;
                              }).place;
    if (character == '\0' || size <= rare) {
      rare -= std::max(size, 1);
      if (rare < 0) return {};
    } else {
      if (parts.count == Parts::kMost) return {};
      parts.ranges[parts.count++] = RangeOf(names, first, first + size);
    }
    first += std::max(size, 1);
  }
  return parts;
}

void NamePrefixes::Choose(const SortedNames& names) {
  count_ = 0;
  Choose(names, RangeOf(names, 0, names.count), 0);
}

// `others`: how many ranges are still to come.
void NamePrefixes::Choose(const SortedNames& names, Range range, std::int32_t others) {
  Parts parts = PartsOf(names, range);
  while (parts.count == 1) {
    range = parts.ranges[0];
    parts = PartsOf(names, range);
  }
  if (parts.count == 0 || count_ + parts.count + others > kMost) {
    prefixes_[count_++] = {names[range.first], range.shared};
    return;
  }
  for (std::int32_t i = 0; i < parts.count; ++i)
    Choose(names, parts.ranges[i], others + parts.count - 1 - i);
}

}  // namespace tarnmf
