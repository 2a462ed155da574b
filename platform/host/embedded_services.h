// SPDX-License-Identifier: Apache-2.0
/// @file
/// The service manager that the host layer ships: it keeps definitions, infos and instances in
/// memory and answers from them.
#ifndef PLATFORM_HOST_EMBEDDED_SERVICES_H
#define PLATFORM_HOST_EMBEDDED_SERVICES_H

#include "platform/host/btkhost.h"
#include "platform/host/manager_list.h"

/// One service of one load point. Its texts belong to the manager and live as long as it.
struct btkHostServiceT {
  UniIdT id;                  ///< the service id
  const btkWChar* loadpoint;  ///< empty for none
  const char* idText;         ///< as given to DefineService
  UniIdT model;               ///< as given to DefineService
  std::uint32_t flags;        ///< btkServiceFlagT
  const char* commonname;     ///< by SetServiceInfo; may be null
  std::int16_t version;       ///< by SetServiceInfo; 0 before
  std::int32_t mode;          ///< btkServiceInfoModeT, by SetServiceInfo; 0 before
  bool hasInstance;           ///< by AddServiceInstance
};

/// One service at most for each pair of id and load point.
class BTK_API btkHostServiceManager : public btkServiceManager {
 public:
  btkHostServiceManager();
  btkHostServiceManager(const btkHostServiceManager&) = delete;
  btkHostServiceManager& operator=(const btkHostServiceManager&) = delete;
  ~btkHostServiceManager() override;

  /// In the order of their first definition. Valid until a service is defined.
  btkHostListT<btkHostServiceT> Services() const;

  /// A second definition of a service replaces the first one's model and flags. Codes: kBtkOk.
  BtkErrorT DefineService(const UniIdT* id, const btkWChar* loadpoint, const char* idText,
                          const UniIdT* model, std::uint32_t flags, std::int32_t reserved1,
                          std::int32_t reserved2, std::int32_t reserved3) override;
  /// Codes: kBtkOk; kBtkNotFound for a service that is not defined.
  BtkErrorT SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint, const char* commonname,
                           std::int16_t version, std::int32_t mode) override;
  /// Answers the version that was set; no oldest supported version is ever registered, so that is
  /// 0. Codes: kBtkOk; kBtkNotFound for a service that is not defined for the load point.
  BtkErrorT QueryServiceVersions(std::int16_t* version, std::int16_t* minVersion, const UniIdT* id,
                                 const btkWChar* loadpoint) override;
  /// Resolves the name among the services of the load point, then among all others: the newest
  /// version with that name, of equal versions the one defined first. A negative `version` asks for
  /// at least -version, any other for every version. Codes: kBtkOk; kBtkNotFound.
  BtkErrorT ResolveExternalService(UniIdT* id, const char* name, std::int16_t version,
                                   std::int16_t reserved, const btkWChar* loadpoint) override;
  /// Codes: kBtkOk; kBtkDuplicate for a second instance; kBtkNotFound for a service that is not
  /// defined.
  BtkErrorT AddServiceInstance(const void* reserved1, const UniIdT* id, const btkWChar* loadpoint,
                               const char* text, std::int32_t reserved2) override;

 private:
  struct State;

  State* const state_;
};

/// The process's embedded manager; installed at start.
BTK_API btkHostServiceManager& btkHostEmbeddedServiceManager();

#endif  // PLATFORM_HOST_EMBEDDED_SERVICES_H
