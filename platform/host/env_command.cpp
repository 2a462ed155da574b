#include "platform/env_command.h"

#include "platform/memory.h"

EnvCmdT::EnvCmdT(ActionT command) : action(command), flags(0), name(nullptr), value(nullptr) {}

void btkEnvCmdRelease(EnvCmdT* commands, std::int32_t count) {
  for (std::int32_t i = count - 1; i >= 0; --i) {
    EnvCmdT& command = commands[i];
    if ((command.flags & kEnvCmdOwnsText) == 0) continue;
    btkStrFree(command.name);
    btkStrFree(command.value);
    command.name = nullptr;
    command.value = nullptr;
    command.flags &= ~static_cast<std::uint32_t>(kEnvCmdOwnsText);
  }
}
