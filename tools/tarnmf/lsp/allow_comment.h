// SPDX-License-Identifier: Apache-2.0
// Comments that say that a finding is on purpose.
#ifndef TOOLS_TARNMF_LSP_ALLOW_COMMENT_H
#define TOOLS_TARNMF_LSP_ALLOW_COMMENT_H

#include <optional>

#include "check/finding.h"
#include "check/installation.h"
#include "check/manifest.h"

namespace tool::lsp {

// Puts one before the innermost element around the finding, or around that, before which comments are
// admitted. Nothing where there is none, and for what cannot be allowed.
std::optional<tarnmf::check::Edit> AllowComment(const tarnmf::check::Manifest& manifest,
                                                const tarnmf::check::Finding& finding);
// Before the statement.
std::optional<tarnmf::check::Edit> AllowComment(const tarnmf::check::LayoutFileText& layout,
                                                const tarnmf::check::Finding& finding);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_ALLOW_COMMENT_H
