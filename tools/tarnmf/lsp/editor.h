// SPDX-License-Identifier: Apache-2.0
// What the editor can do, and how places are told to it.
#ifndef TOOLS_TARNMF_LSP_EDITOR_H
#define TOOLS_TARNMF_LSP_EDITOR_H

#include <cstddef>
#include <string>
#include <vector>

#include "check/finding.h"
#include "check/source.h"
#include "tools/tarnmf/lsp/documents.h"
#include "tools/tarnmf/lsp/positions.h"
#include "tools/tarnmf/lsp/protocol.h"

namespace tool::lsp {

// As the editor tells them when it starts the server.
struct Abilities {
  PositionEncoding encoding = PositionEncoding::kUtf16;
  bool snippets = false;
  bool markdown = false;            // in hovers
  bool nestedSymbols = false;       // of a document
  bool literalActions = false;      // code actions that are more than commands
  bool versionedEdits = false;      // of several documents
  bool relatedInformation = false;  // of diagnostics
  bool prepareRename = false;
  bool registersWatchers = false;  // of files

  static Abilities Of(const Json& capabilities);
};

// The edits of one file.
struct FileEdits {
  const tarnmf::check::Source* source;
  std::vector<tarnmf::check::Edit> edits;
};

class Editor {
 public:
  explicit Editor(const Documents& documents) : documents_(documents) {}

  Abilities abilities;

  // As the editor writes it where the file is open.
  std::string UriOf(const std::string& path) const;

  // The sources are those of the texts as they are now.
  Json RangeOf(const tarnmf::check::Source& source, tarnmf::check::Span span) const;
  Json LocationOf(const tarnmf::check::Source& source, tarnmf::check::Span span) const;
  Json TextEdits(const FileEdits& edits) const;
  Json WorkspaceEdit(const std::vector<FileEdits>& edits) const;

  // Of the source that is made of the document's text.
  std::size_t OffsetIn(const OpenDocument& document, const Json& position) const;

 private:
  Position PositionIn(const tarnmf::check::Source& source, std::size_t offset) const;

  const Documents& documents_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_EDITOR_H
