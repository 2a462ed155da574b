// SPDX-License-Identifier: Apache-2.0
// What can be done about findings.
#ifndef TOOLS_TARNMF_LSP_CODE_ACTIONS_H
#define TOOLS_TARNMF_LSP_CODE_ACTIONS_H

#include "tools/tarnmf/lsp/editor.h"
#include "tools/tarnmf/lsp/workspace.h"

namespace tool::lsp {

inline constexpr char kFixAllKind[] = "source.fixAll.tarnmf";

// Of the findings that touch the range of the request: what check suggests, and to allow them. All
// that is certain in the file can be corrected at once.
// REQUIRES: the workspace is not stale.
Json CodeActions(const OpenDocument& document, const Json& params, const Editor& editor,
                 Workspace& workspace);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_CODE_ACTIONS_H
