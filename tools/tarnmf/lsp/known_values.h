// SPDX-License-Identifier: Apache-2.0
// The values of an attribute that can be told from what the manifests of a process declare.
#ifndef TOOLS_TARNMF_LSP_KNOWN_VALUES_H
#define TOOLS_TARNMF_LSP_KNOWN_VALUES_H

#include <string>
#include <vector>

#include "tools/tarnmf/lsp/completion_place.h"

namespace tool::lsp {

struct KnownValue {
  std::string text;
  std::string detail;
};

// Each once, in the order in which they are shown. REQUIRES: the grammar knows the attribute.
std::vector<KnownValue> KnownValues(const CompletionPlace& place);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_KNOWN_VALUES_H
