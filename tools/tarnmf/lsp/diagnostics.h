// SPDX-License-Identifier: Apache-2.0
// What is found, as the editor shows it.
#ifndef TOOLS_TARNMF_LSP_DIAGNOSTICS_H
#define TOOLS_TARNMF_LSP_DIAGNOSTICS_H

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "check/finding.h"
#include "tools/tarnmf/lsp/documents.h"
#include "tools/tarnmf/lsp/editor.h"
#include "tools/tarnmf/lsp/workspace.h"

namespace tool::lsp {

Json Diagnostic(const tarnmf::check::Finding& finding, const Editor& editor);

// Keeps in mind what the editor shows, as fingerprints: most files have the same findings after most
// changes, and what is not sent is not made.
class DiagnosticsPublisher {
 public:
  using Send = std::function<void(Json params)>;

  DiagnosticsPublisher(const Editor& editor, const Documents& documents)
      : editor_(editor), documents_(documents) {}

  // Sends the findings of every file of which they have changed, and of each open document that has.
  // REQUIRES: the workspace is not stale.
  void Publish(const Workspace& workspace, const Send& send);

 private:
  struct Shown {
    std::optional<std::int64_t> version;  // of an open document
    std::size_t fingerprint = 0;          // of the findings; 0: there are none

    bool operator==(const Shown&) const = default;
  };

  const Editor& editor_;
  const Documents& documents_;
  std::map<std::string, Shown> shown_;  // by URI
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_DIAGNOSTICS_H
