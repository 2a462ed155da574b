// SPDX-License-Identifier: Apache-2.0
// Where the embedded managers keep texts and lists for as long as they live.
#ifndef PLATFORM_HOST_KEPT_H
#define PLATFORM_HOST_KEPT_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <memory_resource>
#include <string>
#include <vector>

#include "platform/host/manager_list.h"

// A list that a manager hands out for as long as it is not changed.
template <class Element>
btkHostListT<Element> ListOf(const std::vector<Element>& elements) {
  return {elements.data(), elements.size()};
}

// What is kept stays where it is.
class Kept {
 public:
  // Null stays null.
  template <class Char>
  const Char* TextOrNull(const Char* text) {
    return text != nullptr ? Copy(text, std::char_traits<Char>::length(text) + 1) : nullptr;
  }
  // Null becomes the empty text.
  template <class Char>
  const Char* Text(const Char* text) {
    static constexpr Char kEmpty[1] = {};
    return text != nullptr ? TextOrNull(text) : kEmpty;
  }
  template <class Element>
  btkHostListT<Element> List(const std::vector<Element>& elements) {
    return {Copy(elements.data(), elements.size()), elements.size()};
  }

 private:
  template <class Element>
  const Element* Copy(const Element* elements, std::size_t count) {
    auto* const copy =
        static_cast<Element*>(memory_.allocate(count * sizeof(Element), alignof(Element)));
    std::uninitialized_copy_n(elements, count, copy);
    return copy;
  }

  std::pmr::monotonic_buffer_resource memory_;
};

#endif  // PLATFORM_HOST_KEPT_H
