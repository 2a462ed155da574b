// SPDX-License-Identifier: Apache-2.0
// The pass that loads libraries ahead of use.
#include <algorithm>

#include "tarnmf/options.h"

#include "platform/filesystem.h"
#include "platform/runtime.h"
#include "platform/service.h"
#include "platform/unique_id.h"
#include "repository/scan.h"
#include "support/ignore_refusal.h"

namespace tarnmf {
namespace {

constexpr std::size_t kImagePathUnits = 261;
constexpr std::size_t kExecutableNameUnits = 260;

// The running process, as preload conditions see it.
class RunningProcess {
 public:
  RunningProcess(btkSvcSession* session, const btkWChar* imagePath)
      : session_(session), image_(btkFSEntry(imagePath).GetTail()) {}

  bool Meets(const MfPreloadInfoT& condition) const {
    switch (condition.by) {
      case kMfByAnyone:
        return true;
      case kMfByExecutable:
        return IsExecutable(condition.name);
      case kMfByService:
        return session_ != nullptr && IsService(condition.svcid) && IsNamed(condition.name);
      case kMfByClient:
        return session_ == nullptr && IsNamed(condition.name);
      default:
        return false;
    }
  }

 private:
  bool IsExecutable(const btkWChar* name) const {
    btkWChar fileName[kExecutableNameUnits] = {};
    // What is written counts, whatever the code: a name that is refused leaves the buffer empty.
    IgnoreRefusal(btkGetExecutableNameW(fileName, kExecutableNameUnits, nullptr, name));
    return image_ == fileName;
  }
  bool IsNamed(const btkWChar* name) const { return name == nullptr || IsExecutable(name); }

  bool IsService(const UniIdT& id) const {
    if (btkUniIdIsNull(id)) return true;
    const UniIdT own = session_->GetServiceId();
    return btkUniIdIsEqual(&id, &own);
  }

  btkSvcSession* session_;
  btkZString image_;  // the file name of the executable
};

bool IsOptionOn(const UniIdT& id) {
  std::uint32_t value = 0;
  return btkUniIdIsNull(id) || (btkConfIsOptionKnown(&id, &value) != 0 && value != 0);
}

}  // namespace

BtkErrorT PreloadModules(btkDlmManager& dlm, const MfLdpDataT& data) {
  btkSvcSession* const session = btkSvcSession::Current();
  btkWChar imagePath[kImagePathUnits] = {};
  if (BtkErrorT e = btkDlmGetCurProcessImagePathW(imagePath, kImagePathUnits)) return e;
  const RunningProcess process(session, imagePath);
  const auto applies = [&process](const MfPreloadInfoT* condition) {
    return process.Meets(*condition) && IsOptionOn(condition->optionid);
  };
  for (const MfModuleT* module : data.modules) {
    const MfModuleImplT& impl = *module->selectedImpl;
    if (impl.resolvedPath == nullptr || !btkIsSharedLibType(module->type)) continue;
    if (!std::any_of(impl.preloads.begin(), impl.preloads.end(), applies)) continue;
    void* handle = nullptr;
    // A library that cannot be loaded ahead of use is loaded, or missed, when it is used.
    IgnoreRefusal(dlm.PreloadModule(&handle, impl.resolvedPath, 0, 0, nullptr, nullptr));
  }
  return kBtkOk;
}

}  // namespace tarnmf
