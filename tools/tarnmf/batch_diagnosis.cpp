#include "tools/tarnmf/batch_diagnosis.h"

#include <cstring>
#include <fmt/format.h>

#include "tarnmf/dispose.h"
#include "tarnmf/publisher.h"

#include "tools/tarnmf/manifest_files.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

// Loads the files afresh, since a publisher changes the records that it is given.
struct Batch {
  explicit Batch(const std::vector<std::string>& files) { Load(FileList(files), BTK_W("."), data); }
  MfLdpDataT data;
};

// Whether the first records of the batch are accepted together.
bool Accepts(const std::vector<std::string>& files, std::int32_t modules, std::int32_t classes) {
  const Batch batch(files);
  liMfPublisher* made = nullptr;
  if (liMfPublisher::CreateNew(&made, kIntfAgentView) != kBtkOk) return true;
  const tarnmf::DisposePtr<liMfPublisher> publisher(made);
  return publisher->Add(batch.data.classes.items, classes, batch.data.modules.items, modules,
                        nullptr, 0) == kBtkOk;
}

// The number of the first of `count` records that makes the batch be refused; `accepts(n)` tells
// whether the first n are accepted. `count` when all are.
template <class AcceptsT>
std::int32_t FirstRefused(std::int32_t count, AcceptsT accepts) {
  if (accepts(count)) return count;
  std::int32_t good = 0;
  std::int32_t bad = count;
  while (bad - good > 1) {
    const std::int32_t middle = good + (bad - good) / 2;
    (accepts(middle) ? good : bad) = middle;
  }
  return good;
}

const char* Shown(const char* text) {
  return text != nullptr ? text : "";
}

// The file that declares the record with this number.
template <class Record>
std::string FileOf(const std::vector<std::string>& files, MfListT<Record> MfLdpDataT::*list,
                   std::int32_t number) {
  for (const std::string& file : files) {
    const Batch part({file});
    const std::int32_t count = (part.data.*list).count;
    if (number < count) return file;
    number -= count;
  }
  return "";
}

std::string ClassName(const MfIntfClassT& record) {
  const std::string id = IdText(record.ids[kMfClientSide]);
  return record.commonname != nullptr ? fmt::format("\"{}\" ({})", record.commonname, id) : id;
}

constexpr const char* kSideNames[] = {"clientside", "serviceside", "agentside"};

std::string WhyModule(const std::vector<std::string>& files, const MfLdpDataT& data,
                      std::int32_t refused) {
  const MfModuleT& module = *data.modules[refused];
  for (std::int32_t i = 0; i < refused; ++i) {
    if (std::strcmp(Shown(data.modules[i]->id), Shown(module.id)) != 0) continue;
    return fmt::format("a module with the same id stands before it, in {}",
                       FileOf(files, &MfLdpDataT::modules, i));
  }
  return "two of its platform modules are for the same machine type";
}

bool MfHasSide(const MfIntfClassT& record, std::int32_t side) {
  return record.sides[side].moduleref != nullptr;
}

bool IsModule(const MfLdpDataT& data, const char* id) {
  for (const MfModuleT* module : data.modules) {
    if (std::strcmp(Shown(module->id), id) == 0) return true;
  }
  return false;
}

// The side that a class of this affinity cannot be without.
const char* MissingSide(const MfIntfClassT& record) {
  const bool client = MfHasSide(record, kMfClientSide);
  switch (record.affinity) {
    case kMfAgentClass:
      return MfHasSide(record, kMfAgentSide) ? nullptr : "an agentside";
    case kMfServiceClass:
      return client || MfHasSide(record, kMfServiceSide) ? nullptr
                                                         : "a clientside or a serviceside";
    default:
      return client ? nullptr : "a clientside";
  }
}

// A class with the same id among those before, unless all of them together need just the side that
// this one brings.
std::optional<std::int32_t> SameClass(const MfLdpDataT& data, std::int32_t refused) {
  const MfIntfClassT& record = *data.classes[refused];
  std::optional<std::int32_t> same;
  bool has[kMfSideCount] = {};
  for (std::int32_t i = 0; i < refused; ++i) {
    if (!IsEqual(data.classes[i]->ids[kMfClientSide], record.ids[kMfClientSide])) continue;
    if (!same) same = i;
    for (std::int32_t side = 0; side < kMfSideCount; ++side)
      has[side] = has[side] || MfHasSide(*data.classes[i], side);
  }
  const bool brings = has[kMfClientSide] != has[kMfServiceSide] &&
                      MfHasSide(record, kMfClientSide) == has[kMfServiceSide] &&
                      MfHasSide(record, kMfServiceSide) == has[kMfClientSide] &&
                      !(has[kMfAgentSide] && MfHasSide(record, kMfAgentSide));
  return brings ? std::nullopt : same;
}

// What a side makes of its module. A module is in one role only, except that a generic one may be
// either kind of service module as well.
enum class ModuleRole { kApp, kAgent, kGeneric, kServiceClient, kServiceServer };

ModuleRole RoleOf(const MfIntfClassT& record, std::int32_t side) {
  if (side == kMfAgentSide) return ModuleRole::kAgent;
  if (side == kMfServiceSide) return ModuleRole::kServiceServer;
  switch (record.affinity) {
    case kMfAppClass:
      return ModuleRole::kApp;
    case kMfGenericClass:
      return ModuleRole::kGeneric;
    default:
      return ModuleRole::kServiceClient;
  }
}

bool Exclude(ModuleRole one, ModuleRole other) {
  if (one == other) return false;
  if (one == ModuleRole::kGeneric) return other < ModuleRole::kGeneric;
  if (other == ModuleRole::kGeneric) return one < ModuleRole::kGeneric;
  return true;
}

// The class, or another side of the same one, that has one of this class's modules in a role that
// leaves no room for this one's.
std::optional<std::string> SharedModule(const MfLdpDataT& data, std::int32_t refused) {
  const MfIntfClassT& record = *data.classes[refused];
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    if (!MfHasSide(record, side)) continue;
    const char* const module = record.sides[side].moduleref;
    for (std::int32_t i = 0; i <= refused; ++i) {
      const MfIntfClassT& owner = *data.classes[i];
      for (std::int32_t other = 0; other < kMfSideCount; ++other) {
        if (!MfHasSide(owner, other) || std::strcmp(owner.sides[other].moduleref, module) != 0 ||
            !Exclude(RoleOf(record, side), RoleOf(owner, other)))
          continue;
        return fmt::format(
            "its {} is module \"{}\", which class {} has as its {} in a role that excludes this "
            "one",
            kSideNames[side], module, ClassName(owner), kSideNames[other]);
      }
    }
  }
  return std::nullopt;
}

std::string WhyClass(const std::vector<std::string>& files, const MfLdpDataT& data,
                     std::int32_t refused) {
  const MfIntfClassT& record = *data.classes[refused];
  if (const auto same = SameClass(data, refused)) {
    return fmt::format(
        "class {} in {} has the same id, and the two do not complete each other as a client side "
        "and a service side",
        ClassName(*data.classes[*same]), FileOf(files, &MfLdpDataT::classes, *same));
  }
  if (const char* missing = MissingSide(record)) return fmt::format("it needs {}", missing);
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    const char* const module = record.sides[side].moduleref;
    if (module != nullptr && !IsModule(data, module)) {
      return fmt::format("its {} names module \"{}\", which no manifest of the load point declares",
                         kSideNames[side], module);
    }
  }
  return SharedModule(data, refused)
      .value_or("one of its modules has a role that excludes this one");
}

}  // namespace

std::optional<std::string> ExplainBatch(const std::vector<std::string>& files) {
  const Batch batch(files);
  const MfLdpDataT& data = batch.data;
  const std::int32_t module =
      FirstRefused(data.modules.count, [&](std::int32_t n) { return Accepts(files, n, 0); });
  if (module < data.modules.count) {
    return fmt::format("{}: module \"{}\" is refused: {}",
                       FileOf(files, &MfLdpDataT::modules, module), Shown(data.modules[module]->id),
                       WhyModule(files, data, module));
  }
  const std::int32_t refused = FirstRefused(
      data.classes.count, [&](std::int32_t n) { return Accepts(files, data.modules.count, n); });
  if (refused == data.classes.count) return std::nullopt;
  return fmt::format("{}: class {} is refused: {}", FileOf(files, &MfLdpDataT::classes, refused),
                     ClassName(*data.classes[refused]), WhyClass(files, data, refused));
}

}  // namespace tool
