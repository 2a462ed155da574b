#include "diagnosis.h"

#include <cstring>
#include <fmt/format.h>
#include <optional>
#include <vector>

#include "tarnmf/publisher.h"

#include "dispose.h"
#include "error_table.h"
#include "scan_session.h"

namespace tool {
namespace {

// Loads the files afresh, since a publisher changes the records that it is given.
struct BatchT {
  explicit BatchT(const std::vector<std::string>& files) {
    Load(FileList(files), BTK_W("."), data);
  }
  MfLdpDataT data;
};

// Whether the first records of the batch are accepted together.
bool Accepts(const std::vector<std::string>& files, std::int32_t modules, std::int32_t classes) {
  const BatchT batch(files);
  liMfPublisher* made = nullptr;
  if (liMfPublisher::CreateNew(&made, kIntfAgentView) != kBtkOk) return true;
  const DisposePtrT<liMfPublisher> publisher(made);
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

std::string ClassName(const MfIntfClassT& record) {
  const std::string id = IdText(record.ids[kMfClientSide]);
  return record.commonname != nullptr ? fmt::format("\"{}\" ({})", record.commonname, id) : id;
}

constexpr const char* kSideNames[] = {"clientside", "serviceside", "agentside"};

std::string WhyModule(const MfLdpDataT& data, std::int32_t refused) {
  const MfModuleT& module = *data.modules[refused];
  for (std::int32_t i = 0; i < refused; ++i) {
    if (std::strcmp(Shown(data.modules[i]->id), Shown(module.id)) == 0) {
      return "a module with the same id stands before it";
    }
  }
  return "two of its platform modules are for the same machine type";
}

bool HasSide(const MfIntfClassT& record, std::int32_t side) {
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
  const bool client = HasSide(record, kMfClientSide);
  switch (record.affinity) {
    case kMfAgentClass:
      return HasSide(record, kMfAgentSide) ? nullptr : "an agentside";
    case kMfServiceClass:
      return client || HasSide(record, kMfServiceSide) ? nullptr : "a clientside or a serviceside";
    default:
      return client ? nullptr : "a clientside";
  }
}

// Another class that uses one of this class's modules.
std::optional<std::string> SharedModule(const MfLdpDataT& data, std::int32_t refused) {
  const MfIntfClassT& record = *data.classes[refused];
  for (const MfIntfSideT& side : record.sides) {
    if (side.moduleref == nullptr) continue;
    for (std::int32_t i = 0; i <= refused; ++i) {
      for (std::int32_t other = 0; other < kMfSideCount; ++other) {
        const MfIntfSideT& otherSide = data.classes[i]->sides[other];
        if (&otherSide == &side || otherSide.moduleref == nullptr) continue;
        if (std::strcmp(otherSide.moduleref, side.moduleref) != 0) continue;
        return fmt::format(
            "its {} is module \"{}\", which class {} has as its {} in a role that "
            "excludes this one",
            kSideNames[&side - record.sides], side.moduleref, ClassName(*data.classes[i]),
            kSideNames[other]);
      }
    }
  }
  return std::nullopt;
}

std::string WhyClass(const MfLdpDataT& data, std::int32_t refused) {
  const MfIntfClassT& record = *data.classes[refused];
  for (std::int32_t i = 0; i < refused; ++i) {
    if (!IsEqual(data.classes[i]->ids[kMfClientSide], record.ids[kMfClientSide])) continue;
    return fmt::format(
        "class {} before it has the same id, and the two do not complete each other "
        "as a client side and a service side",
        ClassName(*data.classes[i]));
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

std::optional<std::string> ExplainBatch(const std::vector<std::string>& files) {
  const BatchT batch(files);
  const MfLdpDataT& data = batch.data;
  const std::int32_t module =
      FirstRefused(data.modules.count, [&](std::int32_t n) { return Accepts(files, n, 0); });
  if (module < data.modules.count) {
    return fmt::format("module \"{}\" is refused: {}", Shown(data.modules[module]->id),
                       WhyModule(data, module));
  }
  const std::int32_t refused = FirstRefused(
      data.classes.count, [&](std::int32_t n) { return Accepts(files, data.modules.count, n); });
  if (refused == data.classes.count) return std::nullopt;
  return fmt::format("class {} is refused: {}", ClassName(*data.classes[refused]),
                     WhyClass(data, refused));
}

// An installation that was not even announced failed at its layout file or at its place.
std::optional<std::string> ExplainInstallation(const ScanStepT& step) {
  const RangeT& announced = step.registered.installations;
  if (step.isProcess || announced.begin != announced.end) return std::nullopt;
  if (step.result.code == kBtkDuplicate) {
    return fmt::format("a load point with the same base directory is filed already ({})",
                       CodeInWords(step.result.code));
  }
  return fmt::format("the layout file {}/.installed cannot be used; {}", step.directory,
                     step.result.InWords());
}

}  // namespace

std::string ExplainFailure(const ScanStepT& step) {
  if (auto reason = ExplainInstallation(step)) return *reason;
  if (auto reason = FirstBadFile(step.manifests)) return *reason;
  if (step.result.code == kBtkUnexpected) {
    if (auto reason = ExplainBatch(step.manifests)) {
      return fmt::format("{} ({})", *reason, CodeInWords(step.result.code));
    }
  }
  return step.result.InWords();
}

}  // namespace tool
