#include "platform/host/embedded_services.h"

#include "platform/runtime.h"

namespace {

bool IsSamePath(const btkHostWideT& left, const btkWChar* right) {
  const btkWChar* const leftText = left.c_str();
  const btkWChar* const rightText = right != nullptr ? right : BTK_W("");
  return Cmp_cWPaths_Safe(&leftText, &rightText) == 0;
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

btkHostServiceManager::IdBytes btkHostServiceManager::BytesOf(const UniIdT& id) {
  return std::to_array(id.bytes);
}

btkHostServiceT* btkHostServiceManager::Find(const UniIdT& id, const btkWChar* loadpoint) {
  const auto [first, last] = byId_.equal_range(BytesOf(id));
  for (auto place = first; place != last; ++place) {
    btkHostServiceT& service = services_[place->second];
    if (IsSamePath(service.loadpoint, loadpoint)) return &service;
  }
  return nullptr;
}

BtkErrorT btkHostServiceManager::DefineService(const UniIdT* id, const btkWChar* loadpoint,
                                               const char* idText, const UniIdT* model,
                                               std::uint32_t flags, std::int32_t /*reserved1*/,
                                               std::int32_t /*reserved2*/,
                                               std::int32_t /*reserved3*/) {
  if (btkHostServiceT* const defined = Find(*id, loadpoint)) {
    defined->model = *model;
    defined->flags = flags;
    return kBtkOk;
  }
  byId_.emplace(BytesOf(*id), services_.size());
  services_.push_back({*id, loadpoint != nullptr ? loadpoint : BTK_W(""), idText, *model, flags,
                       std::nullopt, 0, kBtkInfoShared, false});
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint,
                                                const char* commonname, std::int16_t version,
                                                std::int32_t mode) {
  btkHostServiceT* const service = Find(*id, loadpoint);
  if (service == nullptr) return kBtkNotFound;
  if (commonname == nullptr) {
    service->commonname.reset();
  } else if (service->commonname != commonname) {
    service->commonname = commonname;
    byName_.emplace(commonname, static_cast<std::size_t>(service - services_.data()));
  }
  service->version = version;
  service->mode = mode;
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::QueryServiceVersions(std::int16_t* version,
                                                      std::int16_t* minVersion, const UniIdT* id,
                                                      const btkWChar* loadpoint) {
  const btkHostServiceT* const service = Find(*id, loadpoint);
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
  const auto [first, last] = byName_.equal_range(name);
  for (auto place = first; place != last; ++place) {
    const btkHostServiceT& service = services_[place->second];
    if (service.commonname != name || (oldest > 0 && service.version < oldest)) continue;
    if (best == nullptr || IsBetter(service, *best, loadpoint)) best = &service;
  }
  if (best == nullptr) return kBtkNotFound;
  *id = best->id;
  return kBtkOk;
}

BtkErrorT btkHostServiceManager::AddServiceInstance(const void* /*reserved1*/, const UniIdT* id,
                                                    const btkWChar* loadpoint, const char* /*text*/,
                                                    std::int32_t /*reserved2*/) {
  btkHostServiceT* const service = Find(*id, loadpoint);
  if (service == nullptr) return kBtkNotFound;
  if (service->hasInstance) return kBtkDuplicate;
  service->hasInstance = true;
  return kBtkOk;
}
