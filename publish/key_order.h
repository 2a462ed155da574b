// SPDX-License-Identifier: Apache-2.0
// The records of a batch in the order of their keys, which leaves the batch as it is.
#ifndef PUBLISH_KEY_ORDER_H
#define PUBLISH_KEY_ORDER_H

#include <algorithm>
#include <cstdint>

#include "tarnmf/list.h"

#include "publish/fetch_ahead.h"
#include "publish/head_sort.h"
#include "publish/key_heads.h"
#include "publish/publish_index.h"
#include "support/bisect.h"
#include "support/growable_array.h"
#include "support/number_search.h"

namespace tarnmf {

// Records are known by their rank in the order. Most comparisons are of heads, numbers that stand in
// for the keys and lie next to each other; the records are seldom looked at. Where two heads differ,
// the keys stand to each other as the heads do; where they do not, the keys have to be compared.
// Heads that only guess at the order are given up where the comparison of keys says otherwise.
template <class Record, class Heads>
class KeyOrder {
 public:
  // The records have to outlive this object, and their keys must not change. False: out of memory.
  // REQUIRES: there are records.
  [[nodiscard]] bool Build(const MfListT<Record>& records) {
    records_ = records;
    if (!entries_.Reserve(records.count)) return false;
    heads_.Fit(records);
    for (std::int32_t i = 0; i < records.count; ++i) {
      FetchAhead(records, records.count, i, Heads::FetchKey);
      entries_.AppendReserved({heads_.Of(*records[i]), i});
    }
    if (!SortByHead(entries_)) return false;
    SortEqualHeads();
    if constexpr (!Heads::kDecide) {
      if (!HeadsAgreeWithKeys()) SortByKeys();
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
  BisectResult Find(const char* id) const requires(Heads::kDecide) {
    std::uint64_t head = 0;
    if (entries_.Empty() || !heads_.CouldHold(id, head)) return {0, false};
    const std::int32_t first = FirstNotBefore(
        entries_.begin(), Count(), [head](const KeyHead& entry) { return entry.head < head; });
    if (entries_[first].head != head) return {first, false};
    if (Heads::IsWhole(head)) return {first, true};
    const BisectResult at = Bisect(Count() - first, [&](std::int32_t i) {
      return entries_[first + i].head > head ? 1 : CompareTexts((*this)[first + i].id, id);
    });
    return {first + at.place, at.found};
  }

 private:
  void SortEqualHeads() {
    const auto isBefore = [this](const KeyHead& left, const KeyHead& right) {
      const int order = Compare(left, right);
      return order != 0 ? order < 0 : left.position < right.position;
    };
    for (KeyHead* run = entries_.begin(); run != entries_.end();) {
      KeyHead* const end = std::find_if(
          run + 1, entries_.end(), [run](const KeyHead& entry) { return entry.head != run->head; });
      if (end - run > 1) std::sort(run, end, isBefore);
      run = end;
    }
  }

  bool HeadsAgreeWithKeys() const {
    for (std::int32_t i = 1; i < Count(); ++i) {
      if (i < Count() - kTurnsAhead) Prefetch(&(*this)[i + kTurnsAhead].ids);
      if (entries_[i - 1].head != entries_[i].head && CompareKeys((*this)[i - 1], (*this)[i]) >= 0)
        return false;
    }
    return true;
  }

  // With the same head for all, so that only keys count from now on.
  void SortByKeys() {
    for (KeyHead& entry : entries_)
      entry.head = 0;
    SortEqualHeads();
  }

  int Compare(const KeyHead& left, const KeyHead& right) const {
    if (left.head != right.head) return left.head < right.head ? -1 : 1;
    return CompareKeys(*records_[left.position], *records_[right.position]);
  }

  MfListT<Record> records_;
  KeyHeads entries_;
  Heads heads_;
};

using ModuleOrder = KeyOrder<MfModuleT, TextHeads>;
using ClassOrder = KeyOrder<MfIntfClassT, IdHeads>;

}  // namespace tarnmf

#endif  // PUBLISH_KEY_ORDER_H
