// SPDX-License-Identifier: Apache-2.0
// Sorts by numbers that stand in for keys.
#ifndef PUBLISH_HEAD_SORT_H
#define PUBLISH_HEAD_SORT_H

#include <cstdint>

#include "support/growable_array.h"

namespace tarnmf {

// One record of a batch.
struct KeyHead {
  std::uint64_t head;     // stands in for the record's key
  std::int32_t position;  // of the record in the batch
};
using KeyHeads = GrowableArray<KeyHead, 8>;

// Entries with equal heads keep their order. False: out of memory.
[[nodiscard]] bool SortByHead(KeyHeads& entries);

}  // namespace tarnmf

#endif  // PUBLISH_HEAD_SORT_H
