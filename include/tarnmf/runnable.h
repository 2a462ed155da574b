// Runnables and their roles. records.h has the rules for all records.
#ifndef TARNMF_RUNNABLE_H
#define TARNMF_RUNNABLE_H

#include "tarnmf/export.h"
#include "tarnmf/list.h"
#include "tarnmf/values.h"

#include "platform/env_command.h"
#include "platform/types.h"
#include "platform/unique_id.h"

// What every role has. The texts of an environment command are released with the role when the
// command owns them (kEnvCmdOwnsText).
struct TARNMF_API MfRunRoleBaseT {
  MfRunRoleBaseT();
  MfRunRoleBaseT(const MfRunRoleBaseT&) = delete;
  MfRunRoleBaseT& operator=(const MfRunRoleBaseT& other);
  ~MfRunRoleBaseT();

  MfInitStateT initstate = kMfInitDefault;
  MfArrayT<EnvCmdT> env;   // in document order
  MfListT<btkWChar> args;  // a null pointer, not counted, follows the last argument
  char* launcher =
      nullptr;  // name id of the launcher that starts the role; a launcher's own name id
  std::int32_t reserved = -1;
};

struct TARNMF_API MfAppRoleT : MfRunRoleBaseT {
  MfAppRoleT();
  MfAppRoleT& operator=(const MfAppRoleT& other);
  ~MfAppRoleT();

  char* nameid = nullptr;
  char* reservedText = nullptr;
};

struct TARNMF_API MfLauncherRoleT : MfRunRoleBaseT {
  MfLauncherRoleT();
  MfLauncherRoleT& operator=(const MfLauncherRoleT& other);
  ~MfLauncherRoleT();

  MfListT<char> types;  // what the launcher starts
};

struct TARNMF_API MfServiceRoleT : MfRunRoleBaseT {
  MfServiceRoleT();
  MfServiceRoleT& operator=(const MfServiceRoleT& other);
  ~MfServiceRoleT();

  MfServiceModelT model = kMfManaged;
  MfCsimT csim = kMfOpaque;
  MfManagedTypeT managedtype = kMfGeneric;
  UniIdT id = {};
  MfMultiplicityT multiplicity = kMfSingleInstance;
  char* commonname = nullptr;
  std::int32_t version = 0;
  bool recover = false;
  bool exposed = false;
  std::int16_t port = -1;  // 0 to 32767; -1: none
  char* url = nullptr;
};

// Something that can be started, in one role or more.
struct TARNMF_API MfRunnableT {
  MfRunnableT();
  MfRunnableT(const MfRunnableT&) = delete;
  MfRunnableT& operator=(const MfRunnableT& other);
  ~MfRunnableT();

  char* moduleref = nullptr;  // id of the module that holds the runnable
  MfListT<MfServiceRoleT> services;
  MfListT<MfAppRoleT> apps;
  MfListT<MfLauncherRoleT> launchers;
  btkWChar* loadpoint = nullptr;  // owned when flags has kMfRunnableOwnsLoadpoint
  std::uint32_t flags = 0;        // MfRunnableFlagT
};

#endif  // TARNMF_RUNNABLE_H
