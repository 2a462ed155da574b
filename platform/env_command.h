// Environment commands: what a started program's environment is changed by.
#ifndef PLATFORM_ENV_COMMAND_H
#define PLATFORM_ENV_COMMAND_H

#include "platform/types.h"

enum EnvCmdFlagT : std::uint32_t {
  kEnvCmdOwnsText = 0x1,  // name and value belong to the command
  kEnvCmdOverride = 0x2,  // only where the variable exists already
  kEnvCmdCreate = 0x4,    // only where the variable does not exist
};

struct EnvCmdT {
  enum ActionT : std::int32_t { kSet = 1, kUnset = 2, kAppend = 3, kPrepend = 4 };

  BTK_API explicit EnvCmdT(ActionT action);

  ActionT action;
  std::uint32_t flags;
  btkWChar* name;
  btkWChar* value;  // null for kUnset
};
static_assert(sizeof(EnvCmdT) == 24);

// Releases the texts of the commands that own theirs; the array block stays the caller's.
BTK_API void btkEnvCmdRelease(EnvCmdT* commands, std::int32_t count);

#endif  // PLATFORM_ENV_COMMAND_H
