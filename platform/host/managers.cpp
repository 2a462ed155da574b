// SPDX-License-Identifier: Apache-2.0
#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"

namespace {

struct InstalledManagers {
  btkDlmManager* dlm = &btkHostEmbeddedDlmManager();
  btkServiceManager* services = &btkHostEmbeddedServiceManager();
  btkHostIntfRegistry* interfaces = &btkHostEmbeddedDlmManager();
  btkSvcSession* session = nullptr;
};

InstalledManagers& Managers() {
  static InstalledManagers managers;
  return managers;
}

// Made when the layer is loaded, so that the first use is like every other one.
[[maybe_unused]] const InstalledManagers& g_atStart = Managers();

}  // namespace

btkHostDlmManager& btkHostEmbeddedDlmManager() {
  static btkHostDlmManager manager;
  return manager;
}

btkHostServiceManager& btkHostEmbeddedServiceManager() {
  static btkHostServiceManager manager;
  return manager;
}

btkDlmManager* btkDlmManager::Instance() {
  return Managers().dlm;
}
btkServiceManager* btkServiceManager::Instance() {
  return Managers().services;
}
btkSvcSession* btkSvcSession::Current() {
  return Managers().session;
}

BtkErrorT btkIntfPublishRefList(const IntfRefEntryT* entries, std::uint64_t count, bool publish) {
  return Managers().interfaces->PublishRefList(entries, count, publish);
}

void btkHostSetDlmManager(btkDlmManager* manager) {
  Managers().dlm = manager;
}
void btkHostSetServiceManager(btkServiceManager* manager) {
  Managers().services = manager;
}
void btkHostSetServiceSession(btkSvcSession* session) {
  Managers().session = session;
}
void btkHostSetIntfRegistry(btkHostIntfRegistry* registry) {
  Managers().interfaces = registry != nullptr ? registry : &btkHostEmbeddedDlmManager();
}
