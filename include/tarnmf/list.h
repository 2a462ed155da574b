// The array types that records are made of.
#ifndef TARNMF_LIST_H
#define TARNMF_LIST_H

#include <cstdint>

// An exactly sized array with its count. Empty: a null pointer and 0. The array block comes from
// btkReAlloc and is released with btkFree by the record that holds it.
template <class Element>
struct MfArrayT {
  Element* items = nullptr;
  std::int32_t count = 0;

  Element* begin() const { return items; }
  Element* end() const { return items + count; }
  Element& operator[](std::int32_t index) const { return items[index]; }
};

// A list of records or strings. The list owns its elements.
template <class Record>
using MfListT = MfArrayT<Record*>;

#endif  // TARNMF_LIST_H
