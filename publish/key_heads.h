// SPDX-License-Identifier: Apache-2.0
// Numbers that stand in for the keys of a batch's records.
#ifndef PUBLISH_KEY_HEADS_H
#define PUBLISH_KEY_HEADS_H

#include <cstddef>
#include <cstdint>

#include "tarnmf/intf_class.h"
#include "tarnmf/list.h"
#include "tarnmf/module.h"

#include "support/prefetch.h"

namespace tarnmf {

// Heads of module ids: the eight bytes after what all ids of the batch start with; zeros follow the
// end of an id. A module without an id has the head 0, like one whose id ends there.
class TextHeads {
 public:
  static constexpr bool kDecide = true;  // the order of ids is that of their bytes

  // REQUIRES: `modules` is not empty.
  void Fit(const MfListT<MfModuleT>& modules);
  std::uint64_t Of(const MfModuleT& module) const;
  static void FetchKey(const MfModuleT& module) { Prefetch(module.id); }

  // Whether one of the modules may have this id, which then has this head.
  bool CouldHold(const char* id, std::uint64_t& head) const;

  // Whether all ids with this head are equal: they end within it.
  static bool IsWhole(std::uint64_t head) { return head != 0 && (head & 0xFF) == 0; }

 private:
  const char* prefix_ = nullptr;
  std::size_t prefixLength_ = 0;
};

// Heads of class ids: of the bytes that are not the same in all ids of the batch, the first eight.
class IdHeads {
 public:
  static constexpr bool kDecide = false;  // the order of ids is the platform's

  void Fit(const MfListT<MfIntfClassT>& classes);
  std::uint64_t Of(const MfIntfClassT& record) const;
  static void FetchKey(const MfIntfClassT&) {}

 private:
  std::uint8_t places_[sizeof(std::uint64_t)] = {};
  std::int32_t placeCount_ = 0;
};

}  // namespace tarnmf

#endif  // PUBLISH_KEY_HEADS_H
