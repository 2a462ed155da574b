// Environment commands: what a started program's environment is changed by.
#ifndef PLATFORM_ENV_COMMAND_H
#define PLATFORM_ENV_COMMAND_H

#include <cstddef>

#include "platform/types.h"

enum EnvCmdFlagT : std::uint32_t {
  kEnvCmdOwnsText = 0x1,  // name and value belong to the command
  kEnvCmdOverride = 0x2,  // only where the variable exists already
  kEnvCmdCreate = 0x4,    // only where the variable does not exist
};

// Whoever destroys a command releases its texts, with btkStrFree, where it owns them.
struct EnvCmdT {
  enum ActionT : std::int32_t { kSet = 1, kUnset = 2, kAppend = 3, kPrepend = 4 };

  BTK_API explicit EnvCmdT(ActionT action);

  ActionT action;
  std::uint32_t flags;
  btkWChar* name;
  btkWChar* value;  // null for kUnset
};
static_assert(sizeof(EnvCmdT) == 24);
static_assert(offsetof(EnvCmdT, action) == 0 && offsetof(EnvCmdT, flags) == 4 &&
              offsetof(EnvCmdT, name) == 8 && offsetof(EnvCmdT, value) == 16);

#endif  // PLATFORM_ENV_COMMAND_H
