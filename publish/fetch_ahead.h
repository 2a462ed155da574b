// SPDX-License-Identifier: Apache-2.0
// Records that are asked for before they are needed.
#ifndef PUBLISH_FETCH_AHEAD_H
#define PUBLISH_FETCH_AHEAD_H

#include <cstddef>
#include <cstdint>

#include "tarnmf/intf_class.h"

#include "support/prefetch.h"

namespace tarnmf {

inline constexpr std::int32_t kTurnsAhead = 8;

// The records of a batch may lie anywhere in memory, and a walk over them in the order of the batch
// would wait for each of them. Called at turn `i` of such a walk, this asks for the record of a later
// turn. It also calls next(record) with one that was asked for some turns ago and comes sooner, so
// that what it points to can be asked for, too.
template <class List, class Next>
void FetchAhead(const List& records, std::int32_t count, std::int32_t i, Next next) {
  constexpr std::size_t kLine = 64;
  if (i < count - 2 * kTurnsAhead) {
    const auto* const record = records[i + 2 * kTurnsAhead];
    for (std::size_t at = 0; at < sizeof *record; at += kLine)
      Prefetch(reinterpret_cast<const char*>(record) + at);
  }
  if (i < count - kTurnsAhead) next(*records[i + kTurnsAhead]);
}

inline void FetchModuleIds(const MfIntfClassT& record) {
  for (const MfIntfSideT& side : record.sides)
    Prefetch(side.moduleref);
}

}  // namespace tarnmf

#endif  // PUBLISH_FETCH_AHEAD_H
