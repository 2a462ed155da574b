// SPDX-License-Identifier: Apache-2.0
// What manifests declare, as outlines and lists show it.
#ifndef TOOLS_TARNMF_LSP_SYMBOLS_H
#define TOOLS_TARNMF_LSP_SYMBOLS_H

#include <string>
#include <string_view>
#include <vector>

#include "check/manifest.h"

namespace tool::lsp {

struct Symbol {
  // As the protocol numbers them.
  enum class Kind {
    kModule = 2,
    kClass = 5,
    kProperty = 7,
    kInterface = 11,
    kFunction = 12,
    kObject = 19
  };
  Kind kind = Kind::kModule;
  std::string name;              // never empty
  std::string detail;            // a few words beside it; may be empty
  tarnmf::check::Span span;      // of the element
  tarnmf::check::Span nameSpan;  // within it
  std::vector<Symbol> children;
};

// In the order in which they stand in the manifest.
std::vector<Symbol> SymbolsOf(const tarnmf::check::Manifest& manifest);

// Whether a query finds the symbol: its letters stand in the name in this order, whatever their case.
bool IsFoundBy(std::string_view query, std::string_view name);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_SYMBOLS_H
