// SPDX-License-Identifier: Apache-2.0
// "tarnmf lsp": manifests in an editor.
#ifndef TOOLS_TARNMF_LSP_LSP_COMMAND_H
#define TOOLS_TARNMF_LSP_LSP_COMMAND_H

#include "tools/tarnmf/action.h"

namespace tool {

void AddLsp(CLI::App& app, Action& action);

}  // namespace tool

#endif  // TOOLS_TARNMF_LSP_LSP_COMMAND_H
