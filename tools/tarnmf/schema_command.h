// SPDX-License-Identifier: Apache-2.0
// "tarnmf schema": the grammar of manifests for editors and other programs.
#ifndef TOOLS_TARNMF_SCHEMA_COMMAND_H
#define TOOLS_TARNMF_SCHEMA_COMMAND_H

#include "tools/tarnmf/action.h"

namespace tool {

void AddSchema(CLI::App& app, Action& action);

}  // namespace tool

#endif  // TOOLS_TARNMF_SCHEMA_COMMAND_H
