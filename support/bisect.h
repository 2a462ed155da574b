// SPDX-License-Identifier: Apache-2.0
// The search that every sorted array uses.
#ifndef SUPPORT_BISECT_H
#define SUPPORT_BISECT_H

#include <cstdint>

namespace tarnmf {

struct BisectResult {
  std::int32_t place;  // of the match, or where the sought element would be inserted
  bool found;
};

// Searches `count` elements. `compare(index)` returns how the element at `index` stands to what is
// sought: negative when it sorts before, 0 when it matches, positive when it sorts after.
template <class Compare>
BisectResult Bisect(std::int32_t count, Compare compare) {
  std::int32_t low = 0;
  std::int32_t high = count - 1;
  while (high >= low) {
    const std::int32_t middle = low + (high - low + 1) / 2;
    const int order = compare(middle);
    if (order < 0) {
      low = middle + 1;
    } else if (order > 0) {
      high = middle - 1;
    } else {
      return {middle, true};
    }
  }
  return {low, false};
}

}  // namespace tarnmf

#endif  // SUPPORT_BISECT_H
