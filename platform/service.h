// SPDX-License-Identifier: Apache-2.0
/// @file
/// The service manager and the service session of the process. Arguments are borrowed for the call.
///
/// Codes: kBtkOk; any other number refuses what was asked for, and results are written with kBtkOk
/// only. Exceptions of a manager pass through the library. The manager and the session live for as
/// long as the library is used. The library calls them on the thread of its caller and takes no lock
/// for it.
#ifndef PLATFORM_SERVICE_H
#define PLATFORM_SERVICE_H

#include "platform/errors.h"
#include "platform/types.h"
#include "platform/unique_id.h"

/// Flags of DefineService.
enum btkServiceFlagT : std::uint32_t { kBtkServiceSingle = 0x1, kBtkServiceRecover = 0x2 };
/// Modes of SetServiceInfo.
enum btkServiceInfoModeT : std::int32_t { kBtkInfoShared = 0, kBtkInfoSingle = 8 };

/// What the library asks of the service manager, and what it tells it.
class BTK_API btkServiceManager {
 public:
  /// The process's manager, or null when none is available.
  static btkServiceManager* Instance();

  /// Makes a service of a load point known. `idText` is the plain text form of `id`, 32
  /// digits; `flags` are btkServiceFlagT.
  virtual BtkErrorT DefineService(const UniIdT* id, const btkWChar* loadpoint, const char* idText,
                                  const UniIdT* model, std::uint32_t flags, std::int32_t reserved1,
                                  std::int32_t reserved2, std::int32_t reserved3) = 0;

  /// Gives a service its name (may be null) and version. `mode` is a btkServiceInfoModeT.
  virtual BtkErrorT SetServiceInfo(const UniIdT* id, const btkWChar* loadpoint,
                                   const char* commonname, std::int16_t version,
                                   std::int32_t mode) = 0;

  /// Reports the current and the oldest supported version of a service.
  virtual BtkErrorT QueryServiceVersions(std::int16_t* version, std::int16_t* minVersion,
                                         const UniIdT* id, const btkWChar* loadpoint) = 0;

  /// Resolves a service given by name and writes its id. A negative `version` asks for at least
  /// -version; with any other one the manager decides.
  virtual BtkErrorT ResolveExternalService(UniIdT* id, const char* name, std::int16_t version,
                                           std::int16_t reserved, const btkWChar* loadpoint) = 0;

  /// Adds an instance of a service. kBtkDuplicate when it has one already.
  virtual BtkErrorT AddServiceInstance(const void* reserved1, const UniIdT* id,
                                       const btkWChar* loadpoint, const char* text,
                                       std::int32_t reserved2) = 0;

 protected:
  virtual ~btkServiceManager() = default;
};

/// The service that the running process is part of.
class BTK_API btkSvcSession {
 public:
  /// The session, or null when the process runs outside any service.
  static btkSvcSession* Current();

  /// The id of that service.
  virtual UniIdT GetServiceId() = 0;

 protected:
  virtual ~btkSvcSession() = default;
};

#endif  // PLATFORM_SERVICE_H
