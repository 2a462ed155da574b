// SPDX-License-Identifier: Apache-2.0
// A sorted array of things that have a unique name, searched by bisection.
//
// The order is that of a comparator in another library, and the names lie all over memory, so that
// each step of a plain bisection costs a call and two cache misses. Heads (see name_heads.h) stand
// beside the array: a bisection over these numbers tells where a name is, and the comparator searches
// the names with equal heads. An order that is not known to be that of the bytes makes it a guess: the
// comparator then confirms that a name which is not found belongs there. Where it refutes the guess,
// what the guess left out is searched too. So a wrong guess only costs time.
#ifndef REPOSITORY_NAME_INDEX_H
#define REPOSITORY_NAME_INDEX_H

#include <cstdint>

#include "repository/name_heads.h"
#include "support/bisect.h"
#include "support/growable_array.h"

namespace tarnmf {

// `Order` compares two names as strcmp does, and its kIsOfBytes says whether they always stand to each
// other as strcmp has them, too; Element has a member `key`, its name, which must stay
// where it is and as it is for as long as the element is here. Step and Owner are the array's.
template <class Element, std::int32_t Step, class Owner, class Order>
class NameIndex {
 public:
  std::int32_t Count() const { return elements_.Count(); }
  bool Empty() const { return elements_.Empty(); }
  Element& operator[](std::int32_t index) const { return elements_[index]; }

  // `name` may be null.
  BisectResult Find(const char* name) const {
    const IndexRange guess = heads_.Guess(name);
    const BisectResult at = Search(guess.first, guess.last, name);
    if (at.found || Order::kIsOfBytes) return at;
    if (at.place == guess.first && at.place > 0 && Compare(at.place - 1, name) >= 0)
      return Search(0, at.place, name);
    if (at.place == guess.last && at.place < Count() && Compare(at.place, name) <= 0)
      return Search(at.place, Count(), name);
    return at;
  }

  // Makes room for one more element; false when out of memory.
  [[nodiscard]] bool ReserveOne() { return elements_.ReserveMore(1) && heads_.ReserveOne(); }

  // Inserts an element that has the name `key` and is otherwise value-initialised.
  // REQUIRES: room was made before; `place` is where Find has missed the name.
  Element& EmplaceReserved(std::int32_t place, const char* key) {
    Element& element = elements_.EmplaceReserved(place);
    element.key = key;
    heads_.InsertReserved(place, key);
    if (heads_.IsStale()) heads_.Renew({this, KeyAt, Count()});
    return element;
  }

 private:
  static const char* KeyAt(const void* index, std::int32_t i) {
    return static_cast<const NameIndex*>(index)->elements_[i].key;
  }

  int Compare(std::int32_t index, const char* name) const {
    return Order{}(elements_[index].key, name);
  }

  BisectResult Search(std::int32_t first, std::int32_t last, const char* name) const {
    BisectResult at =
        Bisect(last - first, [&](std::int32_t i) { return Compare(first + i, name); });
    at.place += first;
    return at;
  }

  GrowableArray<Element, Step, Owner> elements_;
  NameHeads heads_;  // one for each element
};

}  // namespace tarnmf

#endif  // REPOSITORY_NAME_INDEX_H
