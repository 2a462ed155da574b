// SPDX-License-Identifier: Apache-2.0
/// @file
/// Environment commands: what a started program's environment is changed by.
#ifndef PLATFORM_ENV_COMMAND_H
#define PLATFORM_ENV_COMMAND_H

#include <cstddef>

#include "platform/types.h"

/// Bits of EnvCmdT::flags.
enum EnvCmdFlagT : std::uint32_t {
  kEnvCmdOwnsText = 0x1,  ///< name and value belong to the command
  kEnvCmdOverride = 0x2,  ///< only where the variable exists already
  kEnvCmdCreate = 0x4,    ///< only where the variable does not exist
};

/// One change of one variable. Whoever destroys a command releases its texts, with btkStrFree,
/// where it owns them.
struct EnvCmdT {
  /// What is done to the variable.
  enum ActionT : std::int32_t { kSet = 1, kUnset = 2, kAppend = 3, kPrepend = 4 };

  /// A command without texts and flags.
  BTK_API explicit EnvCmdT(ActionT action);

  ActionT action;       ///< what is done
  std::uint32_t flags;  ///< EnvCmdFlagT
  btkWChar* name;       ///< of the variable
  btkWChar* value;      ///< null for kUnset
};
static_assert(sizeof(EnvCmdT) == 24);
static_assert(offsetof(EnvCmdT, action) == 0 && offsetof(EnvCmdT, flags) == 4 &&
              offsetof(EnvCmdT, name) == 8 && offsetof(EnvCmdT, value) == 16);

#endif  // PLATFORM_ENV_COMMAND_H
