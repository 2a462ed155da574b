// SPDX-License-Identifier: Apache-2.0
// A search among numbers that lie next to each other.
#ifndef SUPPORT_NUMBER_SEARCH_H
#define SUPPORT_NUMBER_SEARCH_H

#include <cstddef>
#include <cstdint>

#include "support/prefetch.h"

namespace tarnmf {

// Leaves the half of `left` elements from `first` on in which the first one lies that is not before.
// A processor would predict every other step of a bisection wrongly: there is no branch to predict.
template <class Element, class IsBefore>
void Halve(const Element*& first, std::size_t& left, IsBefore isBefore) {
  const std::size_t half = left / 2;
  first += half & -static_cast<std::size_t>(isBefore(first[half - 1]));
  left -= half;
}

// The place of the first of `count` elements for which isBefore(element) is not true. When there is
// none before the last place it is that one, whose element is not looked at. Without branches the
// processor can't run ahead, so what the next step may look at is fetched here where much may not be
// in the cache.
// REQUIRES: `count` > 0; the elements for which isBefore is true come first.
template <class Element, class IsBefore>
std::int32_t FirstNotBefore(const Element* elements, std::int32_t count, IsBefore isBefore) {
  constexpr std::size_t kInCache = 8192 / sizeof(Element);
  constexpr std::size_t kInLine = 64 / sizeof(Element);
  const Element* first = elements;
  auto left = static_cast<std::size_t>(count);
  if (left > kInCache) {
    while (left > kInLine) {
      Prefetch(first + left / 4);
      Prefetch(first + left / 2 + left / 4);
      Halve(first, left, isBefore);
    }
  }
  while (left > 1)
    Halve(first, left, isBefore);
  return static_cast<std::int32_t>(first - elements);
}

}  // namespace tarnmf

#endif  // SUPPORT_NUMBER_SEARCH_H
