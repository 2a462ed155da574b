// SPDX-License-Identifier: Apache-2.0
#include "publish/register_interfaces.h"

#include <cstring>
#include <span>
#include <utility>

#include "platform/memory.h"
#include "publish/fetch_ahead.h"
#include "publish/side_paths.h"

namespace tarnmf {
namespace {

using Entries = GrowableArray<IntfRefEntryT, 8>;

std::int32_t MultiplicityOrigin(const MfIntfSideT& side) {
  return (side.flags & kMfSideMultiplicityGiven) != 0 ? kIntfMultiplicityGiven
                                                      : kIntfMultiplicityDefault;
}

// ---- Entries -----------------------------------------------------------------------------------

// The entry of a client or agent side: both stand for the class itself.
IntfRefEntryT ClassEntry(const MfIntfClassT& record, MfSideT side, const char* module) {
  const MfIntfSideT& declared = record.sides[side];
  return {.intfId = &record.ids[kMfClientSide],
          .module = module,
          .commonname = record.commonname,
          .displayname = record.displayname,
          .version = static_cast<std::int16_t>(record.version),
          .shared = declared.multiplicity != kMfAlwaysNew,
          .multiplicityOrigin = MultiplicityOrigin(declared)};
}

IntfRefEntryT ServiceEntry(const MfIntfClassT& record, const char* module) {
  const MfIntfSideT& declared = record.sides[kMfServiceSide];
  return {.intfId = &record.ids[kMfServiceSide],
          .module = module,
          .commonname = nullptr,
          .displayname = record.displayname,
          .version = record.svcVersion,
          .shared = declared.multiplicity == kMfSingleInstance,
          .multiplicityOrigin = MultiplicityOrigin(declared)};
}

void AppendSide(const MfIntfClassT& record, MfSideT side, const SidePaths& paths,
                Entries& entries) {
  if (const char* const module = paths.Of(record, side)) {
    entries.AppendReserved(ClassEntry(record, side, module));
  }
}

// From here on the class itself names the library of its service.
BtkErrorT NameServiceLibrary(MfIntfSideT& side, const char* path) {
  if (std::strcmp(side.moduleref, path) == 0) return kBtkOk;
  char* const copy = btk_strdup(path);
  if (copy == nullptr) return kBtkNoMemory;
  btkStrFree(std::exchange(side.moduleref, copy));
  return kBtkOk;
}

// ---- Groups ------------------------------------------------------------------------------------

// A group appends what one class yields, one entry at most, for which there is room.
using Group = BtkErrorT (*)(MfIntfClassT& record, const SidePaths& paths, Entries& entries);

BtkErrorT AppendAgentSide(MfIntfClassT& record, const SidePaths& paths, Entries& entries) {
  if (record.affinity != kMfAppClass) AppendSide(record, kMfAgentSide, paths, entries);
  return kBtkOk;
}

template <MfAffinityT Affinity>
BtkErrorT AppendClientSide(MfIntfClassT& record, const SidePaths& paths, Entries& entries) {
  if (record.affinity == Affinity) AppendSide(record, kMfClientSide, paths, entries);
  return kBtkOk;
}

// In the agent view a class's agent side stands in for its client side.
template <MfAffinityT Affinity>
BtkErrorT AppendUnlessAgent(MfIntfClassT& record, const SidePaths& paths, Entries& entries) {
  if (MfHasSide(record, kMfAgentSide)) return kBtkOk;
  return AppendClientSide<Affinity>(record, paths, entries);
}

BtkErrorT AppendServiceSide(MfIntfClassT& record, const SidePaths& paths, Entries& entries) {
  if (record.affinity != kMfServiceClass || !MfHasSide(record, kMfServiceSide)) return kBtkOk;
  const char* path = paths.Of(record, kMfServiceSide);
  if (BtkErrorT e = NameServiceLibrary(record.sides[kMfServiceSide], path)) return e;
  entries.AppendReserved(ServiceEntry(record, path));
  return kBtkOk;
}

constexpr Group kAgentView[] = {AppendAgentSide, AppendUnlessAgent<kMfGenericClass>,
                                AppendUnlessAgent<kMfServiceClass>, AppendServiceSide};
constexpr Group kClientView[] = {AppendClientSide<kMfAppClass>, AppendClientSide<kMfGenericClass>,
                                 AppendClientSide<kMfServiceClass>};

BtkErrorT AppendGroups(std::span<const Group> groups, const NewClasses& classes,
                       const SidePaths& paths, Entries& entries) {
  for (Group append : groups) {
    if (!entries.ReserveMore(classes.Count())) return kBtkNoMemory;
    for (std::int32_t i = 0; i < classes.Count(); ++i) {
      FetchAhead(classes, classes.Count(), i, FetchModuleIds);
      if (BtkErrorT e = append(*classes[i], paths, entries)) return e;
    }
  }
  return kBtkOk;
}

}  // namespace

BtkErrorT RegisterInterfaces(const NewClasses& classes, const SortedModules& modules,
                             IntfDispositionT disposition) {
  const std::span<const Group> groups =
      disposition == kIntfAgentView ? std::span<const Group>(kAgentView) : kClientView;
  const SidePaths paths(modules, classes.Count());
  Entries entries;
  if (BtkErrorT e = AppendGroups(groups, classes, paths, entries)) return e;
  return btkIntfPublishRefList(entries.begin(), static_cast<std::uint64_t>(entries.Count()), true);
}

}  // namespace tarnmf
