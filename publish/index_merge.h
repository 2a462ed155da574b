// SPDX-License-Identifier: Apache-2.0
// Takes an accepted batch over into the index of everything accepted.
#ifndef PUBLISH_INDEX_MERGE_H
#define PUBLISH_INDEX_MERGE_H

#include <cstdint>

#include "publish/publish_index.h"
#include "support/growable_array.h"

namespace tarnmf {

// Whatever may fail is done, comparisons of the platform included, before the first element moves.
class IndexMerge {
 public:
  // Both have to outlive this object.
  // REQUIRES: the two have no key in common, list by list.
  IndexMerge(PublishIndexT& merged, PublishIndexT& batch) : merged_(merged), batch_(batch) {}

  // Makes room in `merged` and finds the places in it. False: out of memory.
  [[nodiscard]] bool Prepare();

  // Moves the elements of `batch` to `merged`.
  // REQUIRES: Prepare went well, and neither index has changed since.
  void Move();

 private:
  template <class List>
  bool PrepareList(List& merged, const List& batch);
  template <class List>
  const std::int32_t* MoveList(List& merged, List& batch, const std::int32_t* places);

  PublishIndexT& merged_;
  PublishIndexT& batch_;
  // List by list, how many elements of the merged one come before each of the batch's.
  GrowableArray<std::int32_t, 8> places_;
};

}  // namespace tarnmf

#endif  // PUBLISH_INDEX_MERGE_H
