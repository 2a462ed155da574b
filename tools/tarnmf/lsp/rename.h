// SPDX-License-Identifier: Apache-2.0
// Gives a module another id wherever it is named.
#ifndef TOOLS_TARNMF_LSP_RENAME_H
#define TOOLS_TARNMF_LSP_RENAME_H

#include <string>
#include <vector>

#include "tools/tarnmf/lsp/editor.h"
#include "tools/tarnmf/lsp/names.h"

namespace tool::lsp {

// Whether names of this kind can be changed.
bool CanBeRenamed(const Occurrence& name);

// Throws RequestError where the new id is none or taken, or where what refers to the module may be
// hidden by a document that breaks off.
std::vector<FileEdits> Rename(const LoadPoints& loadpoints, const std::vector<Occurrence>& names,
                              const Occurrence& name, const std::string& newName);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_RENAME_H
