// SPDX-License-Identifier: Apache-2.0
/// @file
/// How the embedded managers hand out what they keep. Nothing here depends on the standard library,
/// of which a program may use another one, or another mode, than the host layer.
#ifndef PLATFORM_HOST_MANAGER_LIST_H
#define PLATFORM_HOST_MANAGER_LIST_H

#include <cstddef>

/// A list that belongs to a manager.
template <class Element>
class btkHostListT {
 public:
  /// The empty list.
  btkHostListT() = default;
  /// `count` elements from `first` on, which are not copied.
  btkHostListT(const Element* first, std::size_t count) : first_(first), count_(count) {}

  /// The first element.
  const Element* begin() const { return first_; }
  /// Behind the last one.
  const Element* end() const { return first_ + count_; }
  /// The number of elements.
  std::size_t size() const { return count_; }
  /// True without elements.
  bool empty() const { return count_ == 0; }
  /// REQUIRES: `index` is less than size().
  const Element& operator[](std::size_t index) const { return first_[index]; }
  /// The last element. REQUIRES: there is one.
  const Element& back() const { return first_[count_ - 1]; }

 private:
  const Element* first_ = nullptr;
  std::size_t count_ = 0;
};

#endif  // PLATFORM_HOST_MANAGER_LIST_H
