// SPDX-License-Identifier: Apache-2.0
// What is said about a place of a manifest.
#ifndef TOOLS_TARNMF_LSP_HOVER_H
#define TOOLS_TARNMF_LSP_HOVER_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "check/manifest.h"
#include "tools/tarnmf/lsp/names.h"

namespace tool::lsp {

struct HoverText {
  tarnmf::check::Span span;  // what it is about
  std::string text;
};

// Elements and attributes are explained; for a name it is told where it is declared. Nothing where
// nothing is known.
std::optional<HoverText> HoverAt(const tarnmf::check::Manifest& manifest, std::size_t offset,
                                 const std::vector<Occurrence>& names, bool asMarkdown);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_HOVER_H
