// SPDX-License-Identifier: Apache-2.0
/// @file
/// The dynamic-library manager that the host layer ships: it keeps every registration in memory,
/// resolves modules to files that exist and loads libraries with the dynamic loader.
#ifndef PLATFORM_HOST_EMBEDDED_DLM_H
#define PLATFORM_HOST_EMBEDDED_DLM_H

#include "platform/host/btkhost.h"
#include "platform/host/manager_list.h"

// Texts and lists of these records belong to the manager and live as long as it.

/// One call of RegisterInstallation.
struct btkHostInstallationT {
  const btkWChar* base;  ///< the installation directory
  UniIdT scope;          ///< the scope that it belongs to
};

/// One call of RegisterLayout.
struct btkHostLayoutT {
  const btkWChar* base;                    ///< the installation directory
  const char* machine;                     ///< the machine type
  const btkWChar* text1;                   ///< as given; may be null
  const btkWChar* text2;                   ///< as given; may be null
  btkHostListT<const btkWChar*> lists[3];  ///< the used slots
  bool flag;                               ///< as given
};

/// Why a module's file is not even looked for.
enum btkHostRefusalT {
  kBtkHostAdmitted,   ///< it is looked for
  kBtkHostLeadsUp,    ///< name or path has a component ".."
  kBtkHostHasNoBase,  ///< a path is relative, and the process has no load point
};

/// One question to ResolveModule and its answer.
struct btkHostResolutionT {
  const char* id;                   ///< of the module
  const btkWChar* loadpoint;        ///< empty for none
  const char* machine;              ///< empty for the native one
  const char* file;                 ///< empty: no such file
  btkHostListT<const char*> tried;  ///< the files that were looked for, in order
  btkHostRefusalT refusal;          ///< why none was looked for
  const char* reason;               ///< the same in words; empty unless refused
};

/// An IntfRefEntryT with texts of its own.
struct btkHostIntfRefT {
  UniIdT intfId;                    ///< as in IntfRefEntryT
  const char* module;               ///< as in IntfRefEntryT
  const char* commonname;           ///< may be null
  const char* displayname;          ///< may be null
  std::int32_t version;             ///< as in IntfRefEntryT
  std::int32_t shared;              ///< as in IntfRefEntryT
  std::int32_t multiplicityOrigin;  ///< as in IntfRefEntryT
};

/// An EnvCmdT with texts of its own.
struct btkHostEnvCmdT {
  EnvCmdT::ActionT action;  ///< as in EnvCmdT
  std::uint32_t flags;      ///< without kEnvCmdOwnsText
  const btkWChar* name;     ///< as in EnvCmdT
  const btkWChar* value;    ///< may be null
};

/// One call of RegisterRunnable.
struct btkHostRunnableT {
  const char* name;                    ///< what it is started by
  const char* moduleref;               ///< id of its module
  const char* launcher;                ///< may be null
  const btkWChar* loadpoint;           ///< empty for none
  btkHostListT<const btkWChar*> args;  ///< without the null at the end
  btkHostListT<btkHostEnvCmdT> env;    ///< in the order given
  std::int32_t initstate;              ///< an MfInitStateT of the library
};

/// What PreloadModule does.
enum btkHostPreloadModeT {
  kBtkHostLoads,        ///< loads the library with the dynamic loader
  kBtkHostRecordsOnly,  ///< notes the call in Preloads; no code of the library runs
};

/// One call of PreloadModule.
struct btkHostPreloadT {
  const char* path;     ///< of the library
  bool isLoaded;        ///< false also when it was only recorded
  const char* failure;  ///< why it was not loaded; empty when nothing was refused
};

/// Registrations are kept in the order in which they were made; a runnable or layout registered
/// twice is kept twice. A list is valid until something is added to it; its records' texts live as
/// long as the manager.
///
/// A module is looked for below the load point, first in its machine-type folder (an empty machine
/// type stands for the native one), then in the load point itself; `path`, when there is one, lies
/// below either. With kBtkForcePath `path` is the directory as it stands. A shared library's file
/// name is decorated as the platform does ("libNAME.so"), any other module's as an executable's,
/// unless kBtkExplicitName takes it as it stands.
///
/// What is found has an absolute path and depends on no current folder:
/// - A relative load point that was announced, as the process's own or as an installation, lies
///   where it was at that time. Any other one, and a relative `path` with kBtkForcePath, is relative
///   to the load point of the process that was announced last; without one it is refused.
/// - A component ".." in `path` or `name` is refused unless kBtkForcePath says that the file is
///   not meant to lie below the load point. That a load point has one is no matter.
/// - What is appended to a directory lies below it even when it begins with a separator.
class BTK_API btkHostDlmManager : public btkDlmManager, public btkHostIntfRegistry {
 public:
  btkHostDlmManager();
  btkHostDlmManager(const btkHostDlmManager&) = delete;
  btkHostDlmManager& operator=(const btkHostDlmManager&) = delete;
  ~btkHostDlmManager() override;

  /// All installations that were announced.
  btkHostListT<btkHostInstallationT> Installations() const;
  /// All load points of the process that were announced; empty for none.
  btkHostListT<const btkWChar*> ProcessLoadpoints() const;
  /// All layouts that were announced.
  btkHostListT<btkHostLayoutT> Layouts() const;
  /// All questions to ResolveModule.
  btkHostListT<btkHostResolutionT> Resolutions() const;
  /// All interface references.
  btkHostListT<btkHostIntfRefT> InterfaceRefs() const;
  /// All runnables.
  btkHostListT<btkHostRunnableT> Runnables() const;
  /// All libraries that were to be preloaded.
  btkHostListT<btkHostPreloadT> Preloads() const;

  /// What PreloadModule does from now on; at start it loads. For programs that inspect load points
  /// without running anything of theirs.
  void SetPreloadMode(btkHostPreloadModeT mode);

  /// The id that follows from the path: the same in every run; the null id for no path. Codes:
  /// kBtkOk.
  BtkErrorT QueryLoadpointId(UniIdT* id, const btkWChar* path) override;
  /// Codes: kBtkOk.
  BtkErrorT RegisterInstallation(const btkWChar* base, const UniIdT* scope) override;
  /// Leaves the scope as it is. Codes: kBtkOk.
  BtkErrorT RegisterProcessLoadpoint(UniIdT* scope, const btkWChar* path) override;
  /// Codes: kBtkOk.
  BtkErrorT RegisterLayout(const btkWChar* base, const char* machine, const btkWChar* text1,
                           const btkWChar* text2, const btkWChar* const* list1,
                           const btkWChar* const* list2, const btkWChar* const* list3,
                           bool flag) override;
  /// True when the load point has a folder named like the machine type; false for no load point.
  bool HasMachineVariant(const btkWChar* loadpoint, const char* machine) override;
  /// Codes: kBtkOk; kBtkNotFound when there is no such file or it is refused, which Resolutions says.
  BtkErrorT ResolveModule(btkZString* result, const char* id, const char* type,
                          const btkWChar* name, const btkWChar* path, std::uint32_t flags,
                          const btkWChar* loadpoint, const char* machine, std::int32_t abits,
                          const btkModuleVersionT* version) override;
  /// Hands nothing to the dynamic loader but the absolute path of a whole library for this machine;
  /// on one that is cut off the loader would die. With kBtkHostRecordsOnly `*handle` stays as it is.
  /// Codes: kBtkOk; kBtkNotFound when the file is none or the loader refuses it, which Preloads says.
  BtkErrorT PreloadModule(void** handle, const char* path, std::int32_t reserved1,
                          std::int32_t reserved2, void* reserved3, void* reserved4) override;
  /// Codes: kBtkOk.
  BtkErrorT RegisterRunnable(btkZString* result, const char* name, const char* moduleref,
                             const char* launcher, const btkWChar* loadpoint, std::int32_t reserved,
                             const btkWChar* const* args, const EnvCmdT* env, std::int32_t envCount,
                             std::int32_t initstate) override;
  /// Keeps the references, whatever `publish` is. Codes: kBtkOk.
  BtkErrorT PublishRefList(const IntfRefEntryT* entries, std::uint64_t count,
                           bool publish) override;

 private:
  struct State;

  State* const state_;
};

/// The process's embedded manager; installed at start.
BTK_API btkHostDlmManager& btkHostEmbeddedDlmManager();

#endif  // PLATFORM_HOST_EMBEDDED_DLM_H
