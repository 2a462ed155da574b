// SPDX-License-Identifier: Apache-2.0
/// @file
/// The dynamic-library manager: load points, library layouts, modules, interface references and
/// runnables. All texts and arrays handed to it are borrowed for the call; it copies what it keeps.
///
/// Codes: kBtkOk; any other number refuses what was asked for, and results are written with kBtkOk
/// only. Exceptions of a manager pass through the library. The manager lives for as long as the
/// library is used. The library calls it on the thread of its caller and takes no lock for it.
#ifndef PLATFORM_DLM_H
#define PLATFORM_DLM_H

#include <cstddef>

#include "platform/env_command.h"
#include "platform/errors.h"
#include "platform/filesystem.h"
#include "platform/runtime.h"
#include "platform/types.h"
#include "platform/unique_id.h"

/// Which view of the interface classes a publisher registers. Every value but kIntfAgentView
/// selects the client view.
enum IntfDispositionT : std::int32_t { kIntfClientView = 1, kIntfAgentView = 2 };

/// One interface reference: which library implements an interface.
struct IntfRefEntryT {
  const UniIdT* intfId;             ///< the interface's id
  const char* module;               ///< path of the library, or a module id
  const char* commonname;           ///< may be null
  const char* displayname;          ///< may be null
  std::int32_t version;             ///< of the class, or of its service
  std::int32_t shared;              ///< 0 or 1
  std::int32_t multiplicityOrigin;  ///< kIntfMultiplicityGiven or kIntfMultiplicityDefault
};
/// The manifest gives no multiplicity.
inline constexpr std::int32_t kIntfMultiplicityDefault = -1;
/// The manifest gives the multiplicity.
inline constexpr std::int32_t kIntfMultiplicityGiven = -2;

static_assert(sizeof(IntfRefEntryT) == 48);
static_assert(offsetof(IntfRefEntryT, intfId) == 0 && offsetof(IntfRefEntryT, module) == 8 &&
              offsetof(IntfRefEntryT, commonname) == 16 &&
              offsetof(IntfRefEntryT, displayname) == 24 &&
              offsetof(IntfRefEntryT, version) == 32 && offsetof(IntfRefEntryT, shared) == 36 &&
              offsetof(IntfRefEntryT, multiplicityOrigin) == 40);

/// Registers `count` interface references in one call. `entries` may be null when `count` is 0.
/// `publish` is true.
BTK_API BtkErrorT btkIntfPublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                                        bool publish);

/// Version and API level of a module's file, passed on when the module is resolved.
struct btkModuleVersionT {
  std::uint32_t version[4];  ///< the most significant number first
  std::int32_t apilevel;     ///< as the manifest gives it
};
static_assert(sizeof(btkModuleVersionT) == 20);

/// How ResolveModule is to read a module's path and name.
enum btkResolveFlagT : std::uint32_t { kBtkForcePath = 0x1, kBtkExplicitName = 0x2 };

/// The type of modules that are shared libraries.
inline constexpr char kBtkSharedLibType[] = "sharedLib";
/// The type of modules that are programs.
inline constexpr char kBtkExecutableType[] = "executable";
/// True for kBtkSharedLibType, in either letter case; no type and an empty one stand for it.
inline bool btkIsSharedLibType(const char* type) {
  return type == nullptr || *type == '\0' || btk_strcasecmp(type, kBtkSharedLibType) == 0;
}

/// What the library asks of the dynamic-library manager, and what it tells it.
class BTK_API btkDlmManager {
 public:
  /// The process's manager, or null when none is available.
  static btkDlmManager* Instance();

  /// Writes the id of the load point with `path`; null stands for no path.
  virtual BtkErrorT QueryLoadpointId(UniIdT* id, const btkWChar* path) = 0;

  /// Announces an installation directory and the scope that it belongs to.
  virtual BtkErrorT RegisterInstallation(const btkWChar* base, const UniIdT* scope) = 0;

  /// Announces the process's own load point (null: it has none); may write its scope id.
  virtual BtkErrorT RegisterProcessLoadpoint(UniIdT* scope, const btkWChar* path) = 0;

  /// Announces one library layout of an installation for one machine type. The lists are arrays of
  /// 17 slots, the used ones first, the others null.
  virtual BtkErrorT RegisterLayout(const btkWChar* base, const char* machine, const btkWChar* text1,
                                   const btkWChar* text2, const btkWChar* const* list1,
                                   const btkWChar* const* list2, const btkWChar* const* list3,
                                   bool flag) = 0;

  /// True when the load point offers programs for the machine type.
  virtual bool HasMachineVariant(const btkWChar* loadpoint, const char* machine) = 0;

  /// Finds the file of a module's implementation and writes its path. `type`, `path`, `loadpoint`
  /// and `machine` may be null; an empty `machine` stands for the native one.
  virtual BtkErrorT ResolveModule(btkZString* result, const char* id, const char* type,
                                  const btkWChar* name, const btkWChar* path, std::uint32_t flags,
                                  const btkWChar* loadpoint, const char* machine,
                                  std::int32_t abits, const btkModuleVersionT* version) = 0;

  /// Loads the library at `path` now and keeps it loaded. `*handle` is the manager's own: nobody
  /// closes it.
  virtual BtkErrorT PreloadModule(void** handle, const char* path, std::int32_t reserved1,
                                  std::int32_t reserved2, void* reserved3, void* reserved4) = 0;

  /// Registers something that can be started. `args` ends with a null pointer and may itself be
  /// null, as may `launcher`. What is written to `result` is not looked at.
  virtual BtkErrorT RegisterRunnable(btkZString* result, const char* name, const char* moduleref,
                                     const char* launcher, const btkWChar* loadpoint,
                                     std::int32_t reserved, const btkWChar* const* args,
                                     const EnvCmdT* env, std::int32_t envCount,
                                     std::int32_t initstate) = 0;

 protected:
  virtual ~btkDlmManager() = default;
};

#endif  // PLATFORM_DLM_H
