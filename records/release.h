// How destructors release what a record owns.
#ifndef RECORDS_RELEASE_H
#define RECORDS_RELEASE_H

#include <cstdint>
#include <utility>

#include "tarnmf/list.h"

#include "platform/memory.h"

namespace tarnmf {

template <class Char>
void ReleaseText(Char*& text) {
  btkStrFree(std::exchange(text, nullptr));
}

// A text that is the record's only when `flags` has `ownedBit`.
template <class Char>
void ReleaseText(Char*& text, std::uint32_t flags, std::uint32_t ownedBit) {
  Char* const taken = std::exchange(text, nullptr);
  if ((flags & ownedBit) != 0) btkStrFree(taken);
}

// A list taken out of its record: the record no longer shows it while its elements end, the last
// one first, and then the array.
template <class Record>
class TakenListT {
 public:
  explicit TakenListT(MfListT<Record>& list) : list_(std::exchange(list, {})) {}
  TakenListT(const TakenListT&) = delete;
  TakenListT& operator=(const TakenListT&) = delete;
  ~TakenListT() {
    while (list_.count > 0)
      delete list_.items[--list_.count];
    btkFree(list_.items);
  }

 private:
  MfListT<Record> list_;
};

// The same for an array of strings.
template <class Char>
void ReleaseStrings(MfListT<Char>& list) {
  MfListT<Char> taken = std::exchange(list, {});
  while (taken.count > 0)
    btkStrFree(taken.items[--taken.count]);
  btkFree(taken.items);
}

}  // namespace tarnmf

#endif  // RECORDS_RELEASE_H
