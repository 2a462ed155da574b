// SPDX-License-Identifier: Apache-2.0
/// @file
/// Runnables and their roles. records.h has the rules for all records.
#ifndef TARNMF_RUNNABLE_H
#define TARNMF_RUNNABLE_H

#include "tarnmf/export.h"
#include "tarnmf/list.h"
#include "tarnmf/values.h"

#include "platform/env_command.h"
#include "platform/types.h"
#include "platform/unique_id.h"

/// What every role has. The texts of an environment command are released with the role when the
/// command owns them (kEnvCmdOwnsText).
struct TARNMF_API MfRunRoleBaseT {
  MfRunRoleBaseT();
  MfRunRoleBaseT(const MfRunRoleBaseT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfRunRoleBaseT& operator=(const MfRunRoleBaseT& other);
  ~MfRunRoleBaseT();

  MfInitStateT initstate = kMfInitDefault;  ///< the environment that the role starts from
  MfArrayT<EnvCmdT> env;                    ///< in document order
  MfListT<btkWChar> args;  ///< a null pointer, not counted, follows the last argument
  /// Name id of the launcher that starts the role; in a launcher's role, its own name id.
  char* launcher = nullptr;
  std::int32_t reserved = -1;  ///< reserved
};

/// An application.
struct TARNMF_API MfAppRoleT : MfRunRoleBaseT {
  MfAppRoleT();
  /// Copies the fields as they stand; see records.h.
  MfAppRoleT& operator=(const MfAppRoleT& other);
  ~MfAppRoleT();

  char* nameid = nullptr;        ///< the name that it is registered under
  char* reservedText = nullptr;  ///< reserved
};

/// What starts other runnables.
struct TARNMF_API MfLauncherRoleT : MfRunRoleBaseT {
  MfLauncherRoleT();
  /// Copies the fields as they stand; see records.h.
  MfLauncherRoleT& operator=(const MfLauncherRoleT& other);
  ~MfLauncherRoleT();

  MfListT<char> types;  ///< what the launcher starts
};

/// A service, which hosts the service sides of classes.
struct TARNMF_API MfServiceRoleT : MfRunRoleBaseT {
  MfServiceRoleT();
  /// Copies the fields as they stand; see records.h.
  MfServiceRoleT& operator=(const MfServiceRoleT& other);
  ~MfServiceRoleT();

  MfServiceModelT model = kMfManaged;                ///< whether the platform manages it
  MfCsimT csim = kMfOpaque;                          ///< what is known of its implementation
  MfManagedTypeT managedtype = kMfGeneric;           ///< who manages its life
  UniIdT id = {};                                    ///< the service id
  MfMultiplicityT multiplicity = kMfSingleInstance;  ///< how many instances there may be
  char* commonname = nullptr;                        ///< the name that callers resolve
  std::int32_t version = 0;                          ///< of the service
  bool recover = false;                              ///< restarted after a failure
  bool exposed = false;                              ///< found by its combined id
  std::int16_t port = -1;                            ///< 0 to 32767; -1: none
  char* url = nullptr;                               ///< where it is reached
};

/// Something that can be started, in one role or more.
struct TARNMF_API MfRunnableT {
  MfRunnableT();
  MfRunnableT(const MfRunnableT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfRunnableT& operator=(const MfRunnableT& other);
  ~MfRunnableT();

  char* moduleref = nullptr;           ///< id of the module that holds the runnable
  MfListT<MfServiceRoleT> services;    ///< in document order
  MfListT<MfAppRoleT> apps;            ///< in document order
  MfListT<MfLauncherRoleT> launchers;  ///< in document order
  btkWChar* loadpoint = nullptr;       ///< owned when flags has kMfRunnableOwnsLoadpoint
  std::uint32_t flags = 0;             ///< MfRunnableFlagT
};

#endif  // TARNMF_RUNNABLE_H
