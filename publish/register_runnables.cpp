// SPDX-License-Identifier: Apache-2.0
#include "publish/register_runnables.h"

#include <optional>

#include "platform/dlm.h"
#include "platform/runtime.h"
#include "platform/service.h"
#include "support/ignore_refusal.h"

namespace tarnmf {
namespace {

constexpr char kDebugVariable[] = "TARN_SERVICE_MI_DEBUG";

// The models that services are defined with; services of any other kind have none.
constexpr UniIdT genericServiceModelId = {{0xba, 0xab, 0xdc, 0xd0, 0x76, 0x1a, 0x4c, 0x0e, 0x89,
                                           0x7a, 0xa1, 0x78, 0xdf, 0x84, 0x8a, 0xb9}};
constexpr UniIdT containerServiceModelId = {{0x00, 0x1d, 0xa2, 0x85, 0x00, 0x0f, 0x4a, 0xba, 0x8c,
                                             0x7d, 0xb7, 0xd2, 0x48, 0xe7, 0x77, 0x55}};
constexpr UniIdT kNoServiceModelId = {};

const UniIdT& ServiceModelId(MfManagedTypeT managedtype) {
  if (managedtype == kMfGeneric) return genericServiceModelId;
  if (managedtype == kMfContainer) return containerServiceModelId;
  return kNoServiceModelId;
}

std::optional<UniIdT> ReadDebugServiceId() {
  UniIdT id{};
  const char* const text = btk_getenv(kDebugVariable);
  if (text == nullptr) return std::nullopt;
  if (btkUniIdParse(&id, text, kBtkWholeText, nullptr, kBtkUniIdDashed)) return std::nullopt;
  return id;
}

// The id of a service as the text that it is registered under.
struct ServiceIdText {
  explicit ServiceIdText(const UniIdT& id) {
    // The text fits.
    IgnoreRefusal(btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdPlain, 0));
  }
  char text[kBtkUniIdPlainLength + 1] = {};
};

class RunnableRegistration {
 public:
  RunnableRegistration(btkDlmManager& dlm, const std::optional<UniIdT>& debugServiceId)
      : dlm_(dlm), debugServiceId_(debugServiceId) {}

  BtkErrorT Register(const MfRunnableT& runnable) {
    btkZString result;
    for (const MfLauncherRoleT* role : runnable.launchers) {
      if (BtkErrorT e = RegisterRole(result, runnable, *role, role->launcher, nullptr)) return e;
    }
    for (const MfAppRoleT* role : runnable.apps) {
      if (BtkErrorT e = RegisterRole(result, runnable, *role, role->nameid, role->launcher)) {
        return e;
      }
    }
    for (const MfServiceRoleT* role : runnable.services) {
      if (BtkErrorT e = RegisterService(result, runnable, *role)) return e;
    }
    return kBtkOk;
  }

 private:
  BtkErrorT RegisterRole(btkZString& result, const MfRunnableT& runnable,
                         const MfRunRoleBaseT& role, const char* name, const char* launcher) {
    return dlm_.RegisterRunnable(&result, name, runnable.moduleref, launcher, runnable.loadpoint, 0,
                                 role.args.items, role.env.items, role.env.count, role.initstate);
  }

  // Asked for when the first service is met: without services none is needed.
  bool HasServiceManager() {
    if (services_ == nullptr) services_ = btkServiceManager::Instance();
    return services_ != nullptr;
  }

  BtkErrorT RegisterService(btkZString& result, const MfRunnableT& runnable,
                            const MfServiceRoleT& role) {
    if (!HasServiceManager()) return kBtkMissing;
    const ServiceIdText id(role.id);
    // Whether a service is offered is for the service manager to say.
    IgnoreRefusal(RegisterRole(result, runnable, role, id.text, role.launcher));
    const bool single = role.multiplicity == kMfSingleInstance;
    const bool debug =
        !single && debugServiceId_.has_value() && btkUniIdIsEqual(&role.id, &*debugServiceId_);
    std::uint32_t flags = single || debug ? kBtkServiceSingle : 0U;
    if (role.recover && !debug) flags |= kBtkServiceRecover;
    if (BtkErrorT e = services_->DefineService(&role.id, runnable.loadpoint, id.text,
                                               &ServiceModelId(role.managedtype), flags, 0, 0, 0)) {
      return e;
    }
    if (single || debug) return PublishInstance(runnable, role);
    return role.commonname != nullptr ? SetInfo(runnable, role, kBtkInfoShared) : kBtkOk;
  }

  BtkErrorT PublishInstance(const MfRunnableT& runnable, const MfServiceRoleT& role) {
    if (BtkErrorT e = SetInfo(runnable, role, kBtkInfoSingle)) return e;
    const BtkErrorT added =
        services_->AddServiceInstance(nullptr, &role.id, runnable.loadpoint, "", 0);
    return added == kBtkDuplicate ? kBtkOk : added;
  }

  BtkErrorT SetInfo(const MfRunnableT& runnable, const MfServiceRoleT& role,
                    btkServiceInfoModeT mode) {
    return services_->SetServiceInfo(&role.id, runnable.loadpoint, role.commonname,
                                     static_cast<std::int16_t>(role.version), mode);
  }

  btkDlmManager& dlm_;
  btkServiceManager* services_ = nullptr;
  const std::optional<UniIdT> debugServiceId_;
};

}  // namespace

BtkErrorT RegisterRunnables(const NewRunnables& runnables) {
  const std::optional<UniIdT> debugServiceId = ReadDebugServiceId();
  btkDlmManager* const dlm = btkDlmManager::Instance();
  if (dlm == nullptr) return kBtkNotReady;
  RunnableRegistration registration(*dlm, debugServiceId);
  for (const MfRunnableT* runnable : runnables) {
    if (BtkErrorT e = registration.Register(*runnable)) return e;
  }
  return kBtkOk;
}

}  // namespace tarnmf
