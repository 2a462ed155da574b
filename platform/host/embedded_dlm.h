/// @file
/// The dynamic-library manager that the host layer ships: it keeps every registration in memory,
/// resolves modules to files that exist and loads libraries with the dynamic loader.
#ifndef PLATFORM_HOST_EMBEDDED_DLM_H
#define PLATFORM_HOST_EMBEDDED_DLM_H

#include <optional>
#include <string>
#include <vector>

#include "platform/host/btkhost.h"

/// A wide string of its own.
using btkHostWideT = std::basic_string<btkWChar>;

/// One call of RegisterInstallation.
struct btkHostInstallationT {
  btkHostWideT base;  ///< the installation directory
  UniIdT scope;       ///< the scope that it belongs to
};

/// One call of RegisterLayout.
struct btkHostLayoutT {
  btkHostWideT base;                   ///< the installation directory
  std::string machine;                 ///< the machine type
  std::optional<btkHostWideT> text1;   ///< as given; none for null
  std::optional<btkHostWideT> text2;   ///< as given; none for null
  std::vector<btkHostWideT> lists[3];  ///< the used slots
  bool flag;                           ///< as given
};

/// One question to ResolveModule and its answer.
struct btkHostResolutionT {
  std::string id;                  ///< of the module
  btkHostWideT loadpoint;          ///< empty for none
  std::string machine;             ///< empty for the native one
  std::string file;                ///< empty: no such file
  std::vector<std::string> tried;  ///< the files that were looked for, in order
};

/// An IntfRefEntryT with texts of its own.
struct btkHostIntfRefT {
  UniIdT intfId;                           ///< as in IntfRefEntryT
  std::string module;                      ///< as in IntfRefEntryT
  std::optional<std::string> commonname;   ///< none for null
  std::optional<std::string> displayname;  ///< none for null
  std::int32_t version;                    ///< as in IntfRefEntryT
  std::int32_t shared;                     ///< as in IntfRefEntryT
  std::int32_t multiplicityOrigin;         ///< as in IntfRefEntryT
};

/// An EnvCmdT with texts of its own.
struct btkHostEnvCmdT {
  EnvCmdT::ActionT action;            ///< as in EnvCmdT
  std::uint32_t flags;                ///< without kEnvCmdOwnsText
  btkHostWideT name;                  ///< as in EnvCmdT
  std::optional<btkHostWideT> value;  ///< none for null
};

/// One call of RegisterRunnable.
struct btkHostRunnableT {
  std::string name;                     ///< what it is started by
  std::string moduleref;                ///< id of its module
  std::optional<std::string> launcher;  ///< none for null
  btkHostWideT loadpoint;               ///< empty for none
  std::vector<btkHostWideT> args;       ///< without the null at the end
  std::vector<btkHostEnvCmdT> env;      ///< in the order given
  std::int32_t initstate;               ///< an MfInitStateT of the library
};

/// What PreloadModule does.
enum btkHostPreloadModeT {
  kBtkHostLoads,        ///< loads the library with the dynamic loader
  kBtkHostRecordsOnly,  ///< notes the call in Preloads; no code of the library runs
};

/// One call of PreloadModule.
struct btkHostPreloadT {
  std::string path;     ///< of the library
  bool isLoaded;        ///< false also when it was only recorded
  std::string failure;  ///< what the dynamic loader said; empty when it had nothing to refuse
};

/// Registrations are kept in the order in which they were made; a runnable or layout registered
/// twice is kept twice. The lists live as long as the manager and grow with every call.
///
/// A module is looked for below the load point, first in its machine-type folder (an empty machine
/// type stands for the native one), then in the load point itself; `path`, when there is one, lies
/// below either. With kBtkForcePath `path` is the directory as it stands. A shared library's file
/// name is decorated as the platform does ("libNAME.so"), any other module's as an executable's,
/// unless kBtkExplicitName takes it as it stands.
class BTK_API btkHostDlmManager : public btkDlmManager, public btkHostIntfRegistry {
 public:
  /// All installations that were announced.
  const std::vector<btkHostInstallationT>& Installations() const { return installations_; }
  /// All load points of the process that were announced; empty for none.
  const std::vector<btkHostWideT>& ProcessLoadpoints() const { return processLoadpoints_; }
  /// All layouts that were announced.
  const std::vector<btkHostLayoutT>& Layouts() const { return layouts_; }
  /// All questions to ResolveModule.
  const std::vector<btkHostResolutionT>& Resolutions() const { return resolutions_; }
  /// All interface references.
  const std::vector<btkHostIntfRefT>& InterfaceRefs() const { return interfaceRefs_; }
  /// All runnables.
  const std::vector<btkHostRunnableT>& Runnables() const { return runnables_; }
  /// All libraries that were to be preloaded.
  const std::vector<btkHostPreloadT>& Preloads() const { return preloads_; }

  /// What PreloadModule does from now on; at start it loads. For programs that inspect load points
  /// without running anything of theirs.
  void SetPreloadMode(btkHostPreloadModeT mode) { preloadMode_ = mode; }

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
  /// Codes: kBtkOk; kBtkNotFound.
  BtkErrorT ResolveModule(btkZString* result, const char* id, const char* type,
                          const btkWChar* name, const btkWChar* path, std::uint32_t flags,
                          const btkWChar* loadpoint, const char* machine, std::int32_t abits,
                          const btkModuleVersionT* version) override;
  /// With kBtkHostRecordsOnly `*handle` stays as it is. Codes: kBtkOk; kBtkNotFound when the dynamic
  /// loader refuses the file.
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
  std::vector<btkHostInstallationT> installations_;
  std::vector<btkHostWideT> processLoadpoints_;
  std::vector<btkHostLayoutT> layouts_;
  std::vector<btkHostResolutionT> resolutions_;
  std::vector<btkHostIntfRefT> interfaceRefs_;
  std::vector<btkHostRunnableT> runnables_;
  std::vector<btkHostPreloadT> preloads_;
  btkHostPreloadModeT preloadMode_ = kBtkHostLoads;
};

/// The process's embedded manager; installed at start.
BTK_API btkHostDlmManager& btkHostEmbeddedDlmManager();

#endif  // PLATFORM_HOST_EMBEDDED_DLM_H
