// SPDX-License-Identifier: Apache-2.0
/// @file
/// The array types that records are made of.
#ifndef TARNMF_LIST_H
#define TARNMF_LIST_H

#include <cstdint>

/// An exactly sized array with its count. Empty: a null pointer and 0. The array block comes from
/// btkReAlloc and is released with btkFree by the record that holds it.
template <class Element>
struct MfArrayT {
  Element* items = nullptr;  ///< null when there are none
  std::int32_t count = 0;    ///< of the elements

  Element* begin() const { return items; }        ///< for range-based loops
  Element* end() const { return items + count; }  ///< for range-based loops
  /// REQUIRES: 0 <= `index` < `count`.
  Element& operator[](std::int32_t index) const { return items[index]; }
};

/// A list of records or strings. The list owns its elements.
template <class Record>
using MfListT = MfArrayT<Record*>;

#endif  // TARNMF_LIST_H
