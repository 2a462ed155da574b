#include "tools/tarnmf/batch_diagnosis.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

#include "tarnmf/ldp_data.h"

#include "publish/batch_checks.h"
#include "tools/tarnmf/manifest_files.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using tarnmf::Refusal;
using tarnmf::RefusalCause;

// By MfSideT.
constexpr const char* kSideNames[] = {"clientside", "serviceside", "agentside"};
static_assert(std::size(kSideNames) == kMfSideCount);

const char* Shown(const char* text) {
  return text != nullptr ? text : "";
}

std::string ClassName(const MfIntfClassT& record) {
  const std::string id = IdText(record.ids[kMfClientSide]);
  return record.commonname != nullptr ? fmt::format("\"{}\" ({})", record.commonname, id) : id;
}

// The module that the side of a refused class names.
const char* ModuleOf(const Refusal& refusal) {
  return refusal.intfClass->sides[refusal.side].moduleref;
}

// By ModuleRole.
constexpr const char* kRoleNames[] = {"an app module", "an agent module", "a service client module",
                                      "a service server module", "a generic module"};
static_assert(std::size(kRoleNames) == tarnmf::kGenericRole + 1);

// "a clientside or a serviceside".
std::string AnyOf(tarnmf::SideSet sides) {
  std::string text;
  for (MfSideT side : {kMfClientSide, kMfServiceSide, kMfAgentSide}) {
    if ((sides & tarnmf::SideBit(side)) == 0) continue;
    if (!text.empty()) text += " or ";
    text += fmt::format("{} {}", side == kMfAgentSide ? "an" : "a", kSideNames[side]);
  }
  return text;
}

// The records of a load point and the files that they come from.
class Batch {
 public:
  explicit Batch(const std::vector<std::string>& files) : files_(files) { LoadAll(files, data_); }

  // Nothing when the records are accepted together.
  std::optional<std::string> Explain() const {
    const Refusal refusal = tarnmf::CheckFirstBatch(data_.modules, data_.classes);
    if (!refusal) return std::nullopt;
    return RefusedRecord(refusal) + Reason(refusal);
  }

 private:
  // A file that cannot be read has been reported before anybody asks about the batch.
  static void LoadAll(const std::vector<std::string>& files, MfLdpDataT& data) {
    Load(FileList(files), BTK_W("."), data);
  }

  std::string FileOf(const MfModuleT* module) const { return FileOf(&MfLdpDataT::modules, module); }
  std::string FileOf(const MfIntfClassT* record) const {
    return FileOf(&MfLdpDataT::classes, record);
  }

  // Records come in the order of the files, so that the record's number tells its file.
  template <class Record>
  std::string FileOf(MfListT<Record> MfLdpDataT::*list, const Record* record) const {
    auto left =
        std::find((data_.*list).begin(), (data_.*list).end(), record) - (data_.*list).begin();
    for (const std::string& file : files_) {
      MfLdpDataT part;
      LoadAll({file}, part);
      if (left < (part.*list).count) return file;
      left -= (part.*list).count;
    }
    return "";
  }

  std::string RefusedRecord(const Refusal& refusal) const {
    if (refusal.module != nullptr) {
      return fmt::format("{}: module \"{}\" is refused: ", FileOf(refusal.module),
                         Shown(refusal.module->id));
    }
    if (refusal.intfClass != nullptr) {
      return fmt::format("{}: class {} is refused: ", FileOf(refusal.intfClass),
                         ClassName(*refusal.intfClass));
    }
    return "";
  }

  std::string Reason(const Refusal& refusal) const {
    switch (refusal.cause) {
      case RefusalCause::kNone:
        break;
      case RefusalCause::kOutOfMemory:
        return "out of memory while the records were checked";
      case RefusalCause::kSameModuleId:
        return fmt::format("a module with the same id stands before it, in {}",
                           FileOf(refusal.otherModule));
      case RefusalCause::kNoImplementation:
        return "it has no implementation";
      case RefusalCause::kSameMachineType:
        return fmt::format("two of its platform modules are for the same machine type, \"{}\"",
                           Shown(refusal.machineType));
      case RefusalCause::kSameClassId:
        return fmt::format(
            "class {} in {} has the same id, and the two do not complete each other as a client "
            "side and a service side",
            ClassName(*refusal.otherClass), FileOf(refusal.otherClass));
      case RefusalCause::kMissingSide:
        return fmt::format("it needs {}", AnyOf(refusal.neededSides));
      case RefusalCause::kUnknownModule:
        return fmt::format(
            "its {} names module \"{}\", which no manifest of the load point declares",
            kSideNames[refusal.side], ModuleOf(refusal));
      case RefusalCause::kExcludedByOtherRole:
        return fmt::format(
            "its {} is module \"{}\", which class {} has as its {} in a role that excludes this "
            "one: {} makes it {}, which cannot be {} as well",
            kSideNames[refusal.side], ModuleOf(refusal), ClassName(*refusal.otherClass),
            kSideNames[refusal.otherSide], FileOf(refusal.otherClass),
            kRoleNames[refusal.otherRole], kRoleNames[refusal.role]);
    }
    return "";
  }

  const std::vector<std::string>& files_;
  MfLdpDataT data_;
};

}  // namespace

std::optional<std::string> ExplainBatch(const std::vector<std::string>& files) {
  return Batch(files).Explain();
}

}  // namespace tool
