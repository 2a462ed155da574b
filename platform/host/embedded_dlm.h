// The dynamic-library manager that the host layer ships: it keeps every registration in memory,
// resolves modules to files that exist and loads libraries with the dynamic loader.
#ifndef PLATFORM_HOST_EMBEDDED_DLM_H
#define PLATFORM_HOST_EMBEDDED_DLM_H

#include <optional>
#include <string>
#include <vector>

#include "platform/host/btkhost.h"

using btkHostWideT = std::basic_string<btkWChar>;

struct btkHostInstallationT {
  btkHostWideT base;
  UniIdT scope;
};

struct btkHostLayoutT {
  btkHostWideT base;
  std::string machine;
  std::optional<btkHostWideT> text1;
  std::optional<btkHostWideT> text2;
  std::vector<btkHostWideT> lists[3];
  bool flag;
};

// One question to ResolveModule and its answer.
struct btkHostResolutionT {
  std::string id;
  btkHostWideT loadpoint;
  std::string machine;
  std::string file;                // empty: no such file
  std::vector<std::string> tried;  // the files that were looked for, in order
};

struct btkHostIntfRefT {
  UniIdT intfId;
  std::string module;
  std::optional<std::string> commonname;
  std::optional<std::string> displayname;
  std::int32_t version;
  std::int32_t shared;
  std::int32_t multiplicityOrigin;
};

struct btkHostEnvCmdT {
  EnvCmdT::ActionT action;
  std::uint32_t flags;  // without kEnvCmdOwnsText
  btkHostWideT name;
  std::optional<btkHostWideT> value;
};

struct btkHostRunnableT {
  std::string name;
  std::string moduleref;
  std::optional<std::string> launcher;
  btkHostWideT loadpoint;
  std::vector<btkHostWideT> args;
  std::vector<btkHostEnvCmdT> env;
  std::int32_t initstate;
};

struct btkHostPreloadT {
  std::string path;
  std::string failure;  // empty: the library is loaded; else what the dynamic loader said
};

// Registrations are kept in the order in which they were made; a runnable or layout registered
// twice is kept twice. The lists live as long as the manager and grow with every call.
//
// A module is looked for below the load point, first in its machine-type folder (an empty machine
// type stands for the native one), then in the load point itself; `path`, when there is one, lies
// below either. With kBtkForcePath `path` is the directory as it stands. A shared library's file
// name is decorated as the platform does ("libNAME.so"), any other module's as an executable's,
// unless kBtkExplicitName takes it as it stands.
class BTK_API btkHostDlmManager : public btkDlmManager, public btkHostIntfRegistry {
 public:
  const std::vector<btkHostInstallationT>& Installations() const { return installations_; }
  const std::vector<btkHostWideT>& ProcessLoadpoints() const { return processLoadpoints_; }
  const std::vector<btkHostLayoutT>& Layouts() const { return layouts_; }
  const std::vector<btkHostResolutionT>& Resolutions() const { return resolutions_; }
  const std::vector<btkHostIntfRefT>& InterfaceRefs() const { return interfaceRefs_; }
  const std::vector<btkHostRunnableT>& Runnables() const { return runnables_; }
  const std::vector<btkHostPreloadT>& Preloads() const { return preloads_; }

  // The id that follows from the path: the same in every run; the null id for no path.
  BtkErrorT QueryLoadpointId(UniIdT* id, const btkWChar* path) override;
  BtkErrorT RegisterInstallation(const btkWChar* base, const UniIdT* scope) override;
  // Leaves the scope as it is.
  BtkErrorT RegisterProcessLoadpoint(UniIdT* scope, const btkWChar* path) override;
  BtkErrorT RegisterLayout(const btkWChar* base, const char* machine, const btkWChar* text1,
                           const btkWChar* text2, const btkWChar* const* list1,
                           const btkWChar* const* list2, const btkWChar* const* list3,
                           bool flag) override;
  // True when the load point has a folder named like the machine type; false for no load point.
  bool HasMachineVariant(const btkWChar* loadpoint, const char* machine) override;
  // Codes: 0; kBtkNotFound.
  BtkErrorT ResolveModule(btkZString* result, const char* id, const char* type,
                          const btkWChar* name, const btkWChar* path, std::uint32_t flags,
                          const btkWChar* loadpoint, const char* machine, std::int32_t abits,
                          const btkModuleVersionT* version) override;
  // Codes: 0; kBtkNotFound when the dynamic loader refuses the file.
  BtkErrorT PreloadModule(void** handle, const char* path, std::int32_t reserved1,
                          std::int32_t reserved2, void* reserved3, void* reserved4) override;
  BtkErrorT RegisterRunnable(btkZString* result, const char* name, const char* moduleref,
                             const char* launcher, const btkWChar* loadpoint, std::int32_t reserved,
                             const btkWChar* const* args, const EnvCmdT* env, std::int32_t envCount,
                             std::int32_t initstate) override;
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
};

// The process's embedded manager; installed at start.
BTK_API btkHostDlmManager& btkHostEmbeddedDlmManager();

#endif  // PLATFORM_HOST_EMBEDDED_DLM_H
