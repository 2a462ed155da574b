// SPDX-License-Identifier: Apache-2.0
/// @file
/// The process-wide repository of everything that the manifests of the process's load points
/// declare.
#ifndef TARNMF_REPOSITORY_H
#define TARNMF_REPOSITORY_H

#include "tarnmf/export.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/runnable.h"
#include "tarnmf/svc_resolve.h"

#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/types.h"
#include "platform/unique_id.h"

/// The process's load points and what they declare. It is made once, at the start of the process:
/// @code
/// const btkFSList manifests(btkFSEntry("/opt/station"), "*.tmfx");
/// if (BtkErrorT e = liMfRepository::Initialize(manifests, nullptr)) return e;
/// if (BtkErrorT e = liMfRepository::Instance()->AddLoadpoint(BTK_W("/opt/pack"))) return e;
/// @endcode
///
/// Every pointer that a query returns points into the repository: it stays valid for the life of
/// the process and must be neither changed nor freed.
///
/// Thread rules: no lock is taken. Initialize and AddLoadpoint must not overlap with any other
/// operation of the repository; queries may run on several threads at once.
class TARNMF_API liMfRepository {
 public:
  /// Makes the process's repository: reads `files`, the process's manifest files, as the manifests
  /// of the process's own load point, publishes and preloads what they declare, and files it. `dir`
  /// is not looked at. Codes:
  /// - kBtkOk: success; Instance answers from now on.
  /// - kBtkMissing: the repository exists already, or this call comes from within another
  ///   Initialize, and nothing changes; a manifest file cannot be opened; something required is
  ///   missing in a manifest; or there is no service manager, and a service must be registered. Ask
  ///   Instance before the call to tell "exists already" apart.
  /// - kBtkNotReady: no dynamic-library manager.
  /// - kBtkNoMemory: out of memory.
  /// - others: as liLdpMfLoader::Load, liMfPublisher::Add and Publish, the platform's managers, and
  ///   its query for the path of the running executable.
  ///
  /// After any failure but "exists already" there is no repository and Initialize may be tried
  /// again; registrations already made with the platform stay. The same holds for an exception of
  /// the XML library or of a platform call, which passes through.
  ///
  /// Libraries whose preload conditions hold are loaded here, once their load point is published; a
  /// library that cannot be loaded is no failure. `files` is borrowed for the call.
  static BtkErrorT Initialize(const btkFSList& files, const btkWChar* dir);

  /// The repository, or null while no Initialize has succeeded. It is never destroyed.
  static liMfRepository* Instance();

  /// Copies nothing.
  liMfRepository(const liMfRepository&) {}
  /// Copies nothing.
  liMfRepository& operator=(const liMfRepository&) { return *this; }

  /// Adds an installation: reads the layout file ".installed" of the directory `dir`, if there is
  /// one, and all its "*.tmfx" manifests in the order of their names, publishes and files them. The
  /// load point's path is the base directory that the layout file names, by default the parent of
  /// `dir`. Codes:
  /// - kBtkOk: success.
  /// - kBtkMissing: a manifest file cannot be opened; something required is missing in a manifest;
  ///   or there is no service manager, and a service must be registered.
  /// - kBtkNotReady: no dynamic-library manager.
  /// - kBtkNullArgument: `dir` is null or empty.
  /// - kBtkNoMemory: out of memory.
  /// - kBtkDuplicate: a load point with the same path is filed already, or something is given twice
  ///   in a manifest.
  /// - kBtkMalformed: a syntax error in the layout file, or a malformed manifest.
  /// - others: as liLdpMfLoader::Load, liMfPublisher::Add and Publish, and the platform's managers.
  ///
  /// A failure up to the publisher's Add, a load point filed already included, leaves the
  /// repository as it was. A failure of Publish leaves the load point filed, without its classes
  /// and services; kBtkNoMemory may also mean that some of these could not be filed any more.
  /// Registrations already made with the platform stay. Exceptions pass through and leave what a
  /// failure at the same place leaves.
  ///
  /// Nothing is preloaded, and a load point is never removed.
  virtual BtkErrorT AddLoadpoint(const btkWChar* dir) = 0;

  /// Returns the number of load points and, when `ids` is not null and `capacity` suffices, copies
  /// their ids in ascending order; otherwise copies nothing.
  virtual std::int32_t GetLoadpointIds(UniIdT* ids, std::int32_t capacity) = 0;

  /// The manifest data of the load point with this id, or null. A null `id` stands for the null id.
  virtual MfLdpDataT* FindLoadpoint(const UniIdT* id) = 0;

  /// The first service role with this id among the runnables of the load point with this path, or
  /// null. Paths compare as the platform's do. A null `loadpoint` is a path that no load point has;
  /// a null `svcid` finds nothing.
  virtual MfServiceRoleT* FindService(const UniIdT* svcid, const btkWChar* loadpoint) = 0;

  /// The best implementation of the class called `name` (case-sensitive) for a caller in `scope`:
  /// of the entries whose service version is at least `reqVersion` (less than 0 counts as 0) and
  /// whose oldest supported version is at most `limit`, the newest of the scope itself, else the
  /// newest without a scope; of equal versions the one filed last. Null when there is none, or when
  /// `name` is null. A null `scope` stands for the null id, that is for no scope. The entry's
  /// `record` is the class.
  virtual MfSvcResolveT* FindClassImpl(const UniIdT* scope, const char* name,
                                       std::int16_t reqVersion, std::int16_t limit) = 0;

  /// The exposed service with this combined id (btkUniIdCombine of the load point's id and the
  /// service id), or null; null for a null `id`. A service that a load point offers twice is found
  /// as it was filed last.
  virtual MfSvcResolveT* FindServiceEntry(const UniIdT* id) = 0;

  /// Returns the number of exposed services and, when `entries` is not null and `capacity`
  /// suffices, copies their entries in ascending order of combined id; otherwise copies nothing.
  virtual std::int32_t GetServiceEntries(MfSvcResolveT* entries, std::int32_t capacity) = 0;

 protected:
  liMfRepository() = default;
  virtual ~liMfRepository();
};

#endif  // TARNMF_REPOSITORY_H
