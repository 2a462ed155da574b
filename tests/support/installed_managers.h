// SPDX-License-Identifier: Apache-2.0
// Puts managers in the place of the embedded ones.
#ifndef TESTS_SUPPORT_INSTALLED_MANAGERS_H
#define TESTS_SUPPORT_INSTALLED_MANAGERS_H

#include "platform/host/btkhost.h"
#include "platform/host/embedded_dlm.h"
#include "platform/host/embedded_services.h"

namespace tarnmf::test {

// They are installed while this lives.
class InstalledManagers {
 public:
  template <class Dlm>  // registers interfaces, too
  InstalledManagers(Dlm* dlm, btkServiceManager* services) {
    Install(dlm, dlm, services);
  }
  InstalledManagers(const InstalledManagers&) = delete;
  InstalledManagers& operator=(const InstalledManagers&) = delete;
  ~InstalledManagers() {
    Install(&btkHostEmbeddedDlmManager(), nullptr, &btkHostEmbeddedServiceManager());
  }

 private:
  static void Install(btkDlmManager* dlm, btkHostIntfRegistry* registry,
                      btkServiceManager* services) {
    btkHostSetDlmManager(dlm);
    btkHostSetIntfRegistry(registry);
    btkHostSetServiceManager(services);
  }
};

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_INSTALLED_MANAGERS_H
