// SPDX-License-Identifier: Apache-2.0
#include "platform/env_command.h"

EnvCmdT::EnvCmdT(ActionT command) : action(command), flags(0), name(nullptr), value(nullptr) {}
