// SPDX-License-Identifier: Apache-2.0
#include "platform/host/embedded_services.h"

#include <array>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "platform/host/kept.h"
#include "platform/runtime.h"

namespace {

using IdBytes = std::array<std::uint8_t, sizeof(UniIdT)>;

IdBytes BytesOf(const UniIdT& id) {
  return std::to_array(id.bytes);
}

bool HasName(const btkHostServiceT& service, const char* name) {
  return service.commonname != nullptr && std::strcmp(service.commonname, name) == 0;
}

bool IsSamePath(const btkWChar* left, const btkWChar* right) {
  const btkWChar* const rightText = right != nullptr ? right : BTK_W("");
  return Cmp_cWPaths_Safe(&left, &rightText) == 0;
}

// The load point's own services come first, then the newest, then the one defined first.
bool IsBetter(const btkHostServiceT& service, const btkHostServiceT& other,
              const btkWChar* loadpoint) {
  const bool isNear = IsSamePath(service.loadpoint, loadpoint);
  if (isNear != IsSamePath(other.loadpoint, loadpoint)) return isNear;
  if (service.version != other.version) return service.version > other.version;
  return &service < &other;
}

}  // namespace

struct btkHostServiceManager::State {
  Kept kept;
  std::vector<btkHostServiceT> services;
  // Places in services, by service id and by common name. Names given up stay and are passed over.
  std::multimap<IdBytes, std::size_t> byId;
  std::multimap<std::string, std::size_t> byName;

  btkHostServiceT* Find(const UniIdT& id, const btkWChar* loadpoint) {
    const auto [first, last] = byId.equal_range(BytesOf(id));
    for (auto place = first; place != last; ++place) {
      btkHostServiceT& service = services[place->second];
      if (IsSamePath(service.loadpoint, loadpoint)) return &service;
    }
    return nullptr;
  }
};

btkHostServiceManager::btkHostServiceManager() : state_(new State) {}

btkHostServiceManager::~btkHostServiceManager() {
  delete state_;
}

btkHostListT<btkHostServiceT> btkHostServiceManager::Services() const {
  return ListOf(state_->services);
}

BtkErrorT btkHostServiceManager::DefineService(const UniIdT* id, const btkWChar* loadpoint,
                                               const char* idText, const UniIdT* model,
                                               std::uint32_t flags, std::int32_t /*reserved1*/,
                                               std::int32_t /*reserved2*/,
                                               std::int32_t /*reserved3*/) {
  if (btkHostServiceT* const defined = state_->Find(*id, loadpoint)) {
    defined->model = *model;
    defined->flags = flags;
    return kBtkOk;
  }
  Kept& kept = state_->kept;
  state_->services.push_back({*id, kept.Text(loadpoint), kept.Text(idText), *model, flags, nullptr,
                              0, kBtkInfoShared, false});
  state_->byId.emplace(BytesOf(*id), state_->services.size() - 1);
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint,
                                                const char* commonname, std::int16_t version,
                                                std::int32_t mode) {
  btkHostServiceT* const service = state_->Find(*id, loadpoint);
  if (service == nullptr) return kBtkNotFound;
  if (commonname == nullptr) {
    service->commonname = nullptr;
  } else if (!HasName(*service, commonname)) {
    service->commonname = state_->kept.Text(commonname);
    state_->byName.emplace(commonname, static_cast<std::size_t>(service - state_->services.data()));
  }
  service->version = version;
  service->mode = mode;
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::QueryServiceVersions(std::int16_t* version,
                                                      std::int16_t* minVersion, const UniIdT* id,
                                                      const btkWChar* loadpoint) {
  const btkHostServiceT* const service = state_->Find(*id, loadpoint);
  if (service == nullptr) return kBtkNotFound;
  *version = service->version;
  *minVersion = 0;
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::ResolveExternalService(UniIdT* id, const char* name,
                                                        std::int16_t version,
                                                        std::int16_t /*reserved*/,
                                                        const btkWChar* loadpoint) {
  const int oldest = version < 0 ? -version : 0;
  const btkHostServiceT* best = nullptr;
  const auto [first, last] = state_->byName.equal_range(name);
  for (auto place = first; place != last; ++place) {
    const btkHostServiceT& service = state_->services[place->second];
    if (!HasName(service, name) || (oldest > 0 && service.version < oldest)) continue;
    if (best == nullptr || IsBetter(service, *best, loadpoint)) best = &service;
  }
  if (best == nullptr) return kBtkNotFound;
  *id = best->id;
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::AddServiceInstance(const void* /*reserved1*/, const UniIdT* id,
                                                    const btkWChar* loadpoint, const char* /*text*/,
                                                    std::int32_t /*reserved2*/) {
  btkHostServiceT* const service = state_->Find(*id, loadpoint);
  if (service == nullptr) return kBtkNotFound;
  if (service->hasInstance) return kBtkDuplicate;
  service->hasInstance = true;
  return kBtkOk;
}
