// SPDX-License-Identifier: Apache-2.0
// Searches a sorted list for many keys.
#ifndef PUBLISH_ASCENDING_SEARCH_H
#define PUBLISH_ASCENDING_SEARCH_H

#include <algorithm>
#include <cstdint>

#include "publish/publish_index.h"
#include "support/bisect.h"

namespace tarnmf {

// The keys come in ascending order, so that each search starts where the one before ended. It looks
// ahead in growing steps and then bisects the last one, which costs little whether the keys are many
// and lie close to each other or few and far between.
template <class List>
class AscendingSearch {
 public:
  // The list has to outlive this object; `searches` is how many are to be expected.
  AscendingSearch(const List& list, std::int32_t searches)
      : list_(list), firstStep_(std::max(list.Count() / std::max(searches, 1), 1)) {}

  // Where in the list the record's key is or would be.
  template <class Record>
  BisectResult Find(const Record& sought) {
    const auto compare = [&](std::int32_t i) { return CompareKeys(*list_[from_ + i], sought); };
    std::int32_t step = firstStep_;
    while (step <= list_.Count() - from_ && compare(step - 1) < 0) {
      from_ += step;
      if (step <= list_.Count() / 2) step *= 2;
    }
    const BisectResult at = Bisect(std::min(step, list_.Count() - from_), compare);
    from_ += at.place;
    return {from_, at.found};
  }

 private:
  const List& list_;
  const std::int32_t firstStep_;
  std::int32_t from_ = 0;
};

}  // namespace tarnmf

#endif  // PUBLISH_ASCENDING_SEARCH_H
