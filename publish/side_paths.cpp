// SPDX-License-Identifier: Apache-2.0
#include "publish/side_paths.h"

#include "publish/fetch_ahead.h"

namespace tarnmf {
namespace {

const char* PathOf(const MfModuleT& module) {
  return module.selectedImpl->resolvedPath;
}

}  // namespace

// All modules are ordered only for many classes that are not few beside them, and only as a help:
// without memory for that the list itself is searched.
SidePaths::SidePaths(const SortedModules& modules, std::int32_t classCount) : modules_(modules) {
  const bool isWorthIt = !modules.Empty() && classCount > 16 + modules.Count() / 8;
  if (!isWorthIt || !paths_.Reserve(modules.Count()) ||
      !order_.Build({modules.begin(), modules.Count()})) {
    return;
  }
  for (std::int32_t i = 0; i < modules.Count(); ++i) {
    FetchAhead(modules, modules.Count(), i,
               [](const MfModuleT& m) { Prefetch(&m.selectedImpl->resolvedPath); });
    paths_.AppendReserved(PathOf(*modules[i]));
  }
}

const char* SidePaths::Find(const char* id) const {
  const BisectResult at = paths_.Empty() ? FindModule(modules_, id) : order_.Find(id);
  if (!at.found) return nullptr;
  return paths_.Empty() ? PathOf(*modules_[at.place]) : paths_[at.place];
}

const char* SidePaths::Of(const MfIntfClassT& record, MfSideT side) const {
  const char* const id = record.sides[side].moduleref;
  if (id == nullptr) return nullptr;
  const char* const path = Find(id);
  return path != nullptr ? path : id;
}

}  // namespace tarnmf
