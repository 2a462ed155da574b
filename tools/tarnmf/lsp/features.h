// SPDX-License-Identifier: Apache-2.0
// What editors ask about documents.
#ifndef TOOLS_TARNMF_LSP_FEATURES_H
#define TOOLS_TARNMF_LSP_FEATURES_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "check/manifest.h"
#include "tools/tarnmf/lsp/documents.h"
#include "tools/tarnmf/lsp/editor.h"
#include "tools/tarnmf/lsp/names.h"
#include "tools/tarnmf/lsp/workspace.h"

namespace tool::lsp {

class Features {
 public:
  Features(Documents& documents, const Editor& editor, Workspace& workspace)
      : documents_(documents), editor_(editor), workspace_(workspace) {}

  // The result of a request. Throws RequestError for what cannot be answered.
  Json Answer(std::string_view method, const Json& params);

 private:
  // A place of an open manifest.
  struct Spot {
    std::shared_ptr<const tarnmf::check::Manifest> manifest;
    std::size_t offset;
  };
  // The names of the process that a manifest belongs to.
  struct Surroundings {
    LoadPoints loadpoints;
    std::vector<Occurrence> names;
    std::size_t home = 0;  // number of the manifest's load point
  };

  Json Complete(const Json& params);
  Json Hover(const Json& params);
  Json Definition(const Json& params);
  Json References(const Json& params);
  Json PrepareRename(const Json& params);
  Json Rename(const Json& params);
  Json DocumentSymbols(const Json& params);
  Json WorkspaceSymbols(const Json& params);
  Json CodeActions(const Json& params);

  const OpenDocument* DocumentOf(const Json& params);
  std::optional<Spot> SpotOf(const Json& params);
  Surroundings SurroundingsOf(const tarnmf::check::Manifest& manifest);
  Json LocationOf(const Occurrence& name) const;

  Documents& documents_;
  const Editor& editor_;
  Workspace& workspace_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_FEATURES_H
