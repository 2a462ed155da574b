// A search among numbers that lie next to each other.
#ifndef SUPPORT_NUMBER_SEARCH_H
#define SUPPORT_NUMBER_SEARCH_H

#include <cstdint>

#include "support/prefetch.h"

namespace tarnmf {

// The first of `count` places for which isBefore(place) is not true, or the last one. A processor
// would predict every other step of a bisection wrongly: there is no branch to predict. It can't run
// ahead then, so what the next step may look at, one of `elements`, is fetched here.
// REQUIRES: there are elements; the places for which isBefore is true come first.
template <class Element, class IsBefore>
std::int32_t FirstNotBefore(const Element* elements, std::int32_t count, IsBefore isBefore) {
  std::int32_t first = 0;
  while (count > 1) {
    const std::int32_t half = count / 2;
    count -= half;
    Prefetch(elements + first + count / 2);
    Prefetch(elements + first + half + count / 2);
    first += half & -static_cast<std::int32_t>(isBefore(first + half - 1));
  }
  return first;
}

}  // namespace tarnmf

#endif  // SUPPORT_NUMBER_SEARCH_H
