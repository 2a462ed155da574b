// The table behind the option switches.
#ifndef REPOSITORY_OPTION_TABLE_H
#define REPOSITORY_OPTION_TABLE_H

#include <cstdint>

#include "platform/unique_id.h"
#include "support/bisect.h"
#include "support/growable_array.h"

namespace tarnmf {

struct Option {
  UniIdT id;
  std::uint32_t value;
};

// Sorted by id, each id once.
class OptionTable {
 public:
  // Keeps the table as it was when memory cannot be had.
  void Set(const UniIdT& id, std::uint32_t value) {
    const BisectResult at = Search(id);
    if (at.found) {
      options_[at.place].value = value;
    } else if (options_.ReserveMore(1)) {
      options_.InsertReserved(at.place, {id, value});
    }
  }

  // Null when the option was never set. Valid until the next Set.
  const Option* Find(const UniIdT& id) const {
    const BisectResult at = Search(id);
    return at.found ? &options_[at.place] : nullptr;
  }

  std::int32_t Count() const { return options_.Count(); }
  std::int32_t Capacity() const { return options_.Capacity(); }

 private:
  BisectResult Search(const UniIdT& id) const {
    return Bisect(options_.Count(),
                  [&](std::int32_t i) { return btkUniIdCompare(&options_[i].id, &id); });
  }

  GrowableArray<Option, 2, BorrowsElements, ProcessHeap> options_;
};

}  // namespace tarnmf

#endif  // REPOSITORY_OPTION_TABLE_H
