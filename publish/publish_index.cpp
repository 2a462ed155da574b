#include "publish/publish_index.h"

#include <algorithm>

namespace tarnmf {
namespace {

// Moves the elements of `batch` to `merged`, which has room for them. Both are sorted and have no
// key in common. From the last one on, each finds its place among the elements that have not moved
// yet; those after it move up as one block.
template <class List>
void MergeSorted(List& merged, List& batch) {
  std::int32_t unmoved = merged.Count();
  for (auto* record : batch)
    merged.AppendReserved(record);
  for (std::int32_t left = batch.Count(); left > 0; --left) {
    auto* const record = batch[left - 1];
    const std::int32_t place =
        Bisect(unmoved, [&](std::int32_t i) { return CompareKeys(*merged[i], *record); }).place;
    std::move_backward(merged.begin() + place, merged.begin() + unmoved,
                       merged.begin() + unmoved + left);
    merged[place + left - 1] = record;
    unmoved = place;
  }
  batch.Forget();
}

}  // namespace

void PublishIndexT::Forget() {
  for (ModuleListMember list : kModuleLists)
    (this->*list).Forget();
  classes.Forget();
}

bool PublishIndexT::ReserveFor(const PublishIndexT& batch) {
  for (ModuleListMember list : kModuleLists) {
    if (!(this->*list).ReserveMore((batch.*list).Count())) return false;
  }
  return classes.ReserveMore(batch.classes.Count());
}

void PublishIndexT::Merge(PublishIndexT& batch) {
  for (ModuleListMember list : kModuleLists)
    MergeSorted(this->*list, batch.*list);
  MergeSorted(classes, batch.classes);
}

}  // namespace tarnmf
