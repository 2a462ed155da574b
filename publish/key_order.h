// The records of a batch in the order of their keys, which leaves the batch as it is.
#ifndef PUBLISH_KEY_ORDER_H
#define PUBLISH_KEY_ORDER_H

#include <algorithm>
#include <cstdint>

#include "tarnmf/list.h"

#include "publish/key_heads.h"
#include "publish/publish_index.h"
#include "support/bisect.h"
#include "support/growable_array.h"

namespace tarnmf {

// Records are known by their rank in the order. Most comparisons are of heads, numbers that stand in
// for the keys and lie next to each other; the records are seldom looked at. Where two heads differ,
// the keys stand to each other as the heads do; where they do not, the keys have to be compared.
template <class Record, class Heads>
class KeyOrder {
 public:
  // The records have to outlive this object, and their keys must not change. False: out of memory.
  // REQUIRES: there are records.
  [[nodiscard]] bool Build(const MfListT<Record>& records) {
    records_ = records;
    if (!entries_.Reserve(records.count)) return false;
    heads_.Fit(records);
    for (std::int32_t i = 0; i < records.count; ++i)
      entries_.AppendReserved({heads_.Of(*records[i]), i});
    const auto before = [this](const Entry& left, const Entry& right) {
      const int order = Compare(left, right);
      return order != 0 ? order < 0 : left.position < right.position;
    };
    if (!std::is_sorted(entries_.begin(), entries_.end(), before)) {
      std::sort(entries_.begin(), entries_.end(), before);
    }
    return true;
  }

  // Records with equal keys stand in the order of the batch.
  std::int32_t Count() const { return entries_.Count(); }
  Record& operator[](std::int32_t rank) const { return *records_[PositionOf(rank)]; }
  std::int32_t PositionOf(std::int32_t rank) const { return entries_[rank].position; }
  bool HaveEqualKeys(std::int32_t rank, std::int32_t otherRank) const {
    return Compare(entries_[rank], entries_[otherRank]) == 0;
  }

  // The rank of the record with this id.
  BisectResult Find(const char* id) const {
    std::uint64_t head = 0;
    if (entries_.Empty() || !heads_.CouldHold(id, head)) return {0, false};
    return Bisect(entries_.Count(), [&](std::int32_t rank) {
      const Entry& entry = entries_[rank];
      if (entry.head != head) return entry.head < head ? -1 : 1;
      return Heads::IsWhole(head) ? 0 : CompareTexts((*this)[rank].id, id);
    });
  }

 private:
  struct Entry {
    std::uint64_t head;
    std::int32_t position;  // in the batch
  };

  int Compare(const Entry& left, const Entry& right) const {
    if (left.head != right.head) return left.head < right.head ? -1 : 1;
    return CompareKeys(*records_[left.position], *records_[right.position]);
  }

  MfListT<Record> records_;
  GrowableArray<Entry, 8> entries_;
  Heads heads_;
};

using ModuleOrder = KeyOrder<MfModuleT, TextHeads>;
using ClassOrder = KeyOrder<MfIntfClassT, IdHeads>;

}  // namespace tarnmf

#endif  // PUBLISH_KEY_ORDER_H
