// SPDX-License-Identifier: Apache-2.0
#include "publish/index_merge.h"

#include <algorithm>

#include "publish/ascending_search.h"

namespace tarnmf {

// An empty list takes the whole block over.
template <class List>
bool IndexMerge::PrepareList(List& merged, const List& batch) {
  if (merged.Empty()) return true;
  if (!merged.ReserveMore(batch.Count()) || !places_.ReserveMore(batch.Count())) return false;
  AscendingSearch search(merged, batch.Count());
  for (const auto* record : batch)
    places_.AppendReserved(search.Find(*record).place);
  return true;
}

// From the last one on, each element goes to its place among those that have not moved yet; those
// after it move up as one block. Returns the places of the next list.
template <class List>
const std::int32_t* IndexMerge::MoveList(List& merged, List& batch, const std::int32_t* places) {
  if (merged.Empty()) {
    merged.Swap(batch);
    return places;
  }
  std::int32_t unmoved = merged.Count();
  for (auto* record : batch)
    merged.AppendReserved(record);
  for (std::int32_t left = batch.Count(); left > 0; --left) {
    const std::int32_t place = places[left - 1];
    std::move_backward(merged.begin() + place, merged.begin() + unmoved,
                       merged.begin() + unmoved + left);
    merged[place + left - 1] = batch[left - 1];
    unmoved = place;
  }
  return places + batch.Count();
}

bool IndexMerge::Prepare() {
  for (ModuleListMember list : kModuleLists) {
    if (!PrepareList(merged_.*list, batch_.*list)) return false;
  }
  return PrepareList(merged_.classes, batch_.classes);
}

void IndexMerge::Move() {
  const std::int32_t* places = places_.begin();
  for (ModuleListMember list : kModuleLists)
    places = MoveList(merged_.*list, batch_.*list, places);
  MoveList(merged_.classes, batch_.classes, places);
  batch_.Forget();
}

}  // namespace tarnmf
