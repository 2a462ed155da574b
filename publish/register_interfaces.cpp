#include "publish/register_interfaces.h"

#include <cstring>
#include <span>
#include <utility>

#include "platform/memory.h"

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

void AppendSide(const MfIntfClassT& record, MfSideT side, const SortedModules& modules,
                Entries& entries) {
  if (const char* const module = ResolveSidePath(record, side, modules)) {
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
using Group = BtkErrorT (*)(MfIntfClassT& record, const SortedModules& modules, Entries& entries);

BtkErrorT AppendAgentSide(MfIntfClassT& record, const SortedModules& modules, Entries& entries) {
  if (record.affinity != kMfAppClass) AppendSide(record, kMfAgentSide, modules, entries);
  return kBtkOk;
}

template <MfAffinityT Affinity>
BtkErrorT AppendClientSide(MfIntfClassT& record, const SortedModules& modules, Entries& entries) {
  if (record.affinity == Affinity) AppendSide(record, kMfClientSide, modules, entries);
  return kBtkOk;
}

// In the agent view a class's agent side stands in for its client side.
template <MfAffinityT Affinity>
BtkErrorT AppendUnlessAgent(MfIntfClassT& record, const SortedModules& modules, Entries& entries) {
  if (MfHasSide(record, kMfAgentSide)) return kBtkOk;
  return AppendClientSide<Affinity>(record, modules, entries);
}

BtkErrorT AppendServiceSide(MfIntfClassT& record, const SortedModules& modules, Entries& entries) {
  if (record.affinity != kMfServiceClass || !MfHasSide(record, kMfServiceSide)) return kBtkOk;
  const char* path = ResolveSidePath(record, kMfServiceSide, modules);
  if (BtkErrorT e = NameServiceLibrary(record.sides[kMfServiceSide], path)) return e;
  entries.AppendReserved(ServiceEntry(record, path));
  return kBtkOk;
}

constexpr Group kAgentView[] = {AppendAgentSide, AppendUnlessAgent<kMfGenericClass>,
                                AppendUnlessAgent<kMfServiceClass>, AppendServiceSide};
constexpr Group kClientView[] = {AppendClientSide<kMfAppClass>, AppendClientSide<kMfGenericClass>,
                                 AppendClientSide<kMfServiceClass>};

BtkErrorT AppendGroups(std::span<const Group> groups, const NewClasses& classes,
                       const SortedModules& modules, Entries& entries) {
  for (Group append : groups) {
    if (!entries.ReserveMore(classes.Count())) return kBtkNoMemory;
    for (MfIntfClassT* record : classes) {
      if (BtkErrorT e = append(*record, modules, entries)) return e;
    }
  }
  return kBtkOk;
}

}  // namespace

const char* ResolveSidePath(const MfIntfClassT& record, MfSideT side,
                            const SortedModules& modules) {
  const char* const id = record.sides[side].moduleref;
  if (id == nullptr) return nullptr;
  const BisectResult at = FindModule(modules, id);
  if (!at.found) return id;
  const MfModuleImplT* const selected = modules[at.place]->selectedImpl;
  return selected->resolvedPath != nullptr ? selected->resolvedPath : id;
}

BtkErrorT RegisterInterfaces(const NewClasses& classes, const SortedModules& modules,
                             IntfDispositionT disposition) {
  const std::span<const Group> groups =
      disposition == kIntfAgentView ? std::span<const Group>(kAgentView) : kClientView;
  Entries entries;
  if (BtkErrorT e = AppendGroups(groups, classes, modules, entries)) return e;
  return btkIntfPublishRefList(entries.begin(), static_cast<std::uint64_t>(entries.Count()), true);
}

}  // namespace tarnmf
