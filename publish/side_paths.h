// SPDX-License-Identifier: Apache-2.0
// The libraries behind the sides of classes.
#ifndef PUBLISH_SIDE_PATHS_H
#define PUBLISH_SIDE_PATHS_H

#include <cstdint>

#include "tarnmf/intf_class.h"

#include "publish/key_order.h"
#include "publish/publish_index.h"

namespace tarnmf {

class SidePaths {
 public:
  // The modules have to outlive this object; `classCount` is for how many classes it will be asked.
  SidePaths(const SortedModules& modules, std::int32_t classCount);

  // The path of the library that implements one side of a class: its module's resolved path, or the
  // module's id where there is none. Null: the class has no such side.
  const char* Of(const MfIntfClassT& record, MfSideT side) const;

 private:
  const char* Find(const char* id) const;

  const SortedModules& modules_;
  ModuleOrder order_;
  GrowableArray<const char*, 8> paths_;  // of the ordered modules; empty: they are not ordered
};

}  // namespace tarnmf

#endif  // PUBLISH_SIDE_PATHS_H
