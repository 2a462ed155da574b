// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/editor.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "tools/tarnmf/file_uri.h"
#include "tools/tarnmf/lsp/workspace.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

// Sources of manifests are without it; an editor's text may begin with it.
constexpr std::string_view kMark = "\xEF\xBB\xBF";

}  // namespace

Abilities Abilities::Of(const Json& capabilities) {
  Abilities abilities;
  if (Holds(Member(capabilities, "general", "positionEncodings"), "utf-8"))
    abilities.encoding = PositionEncoding::kUtf8;
  const Json& document = Member(capabilities, "textDocument");
  abilities.snippets = IsTrue(Member(document, "completion", "completionItem", "snippetSupport"));
  abilities.markdown = Holds(Member(document, "hover", "contentFormat"), "markdown");
  abilities.nestedSymbols =
      IsTrue(Member(document, "documentSymbol", "hierarchicalDocumentSymbolSupport"));
  abilities.literalActions = Member(document, "codeAction", "codeActionLiteralSupport").is_object();
  abilities.relatedInformation =
      IsTrue(Member(document, "publishDiagnostics", "relatedInformation"));
  abilities.prepareRename = IsTrue(Member(document, "rename", "prepareSupport"));
  const Json& workspace = Member(capabilities, "workspace");
  abilities.versionedEdits = IsTrue(Member(workspace, "workspaceEdit", "documentChanges"));
  abilities.registersWatchers =
      IsTrue(Member(workspace, "didChangeWatchedFiles", "dynamicRegistration"));
  return abilities;
}

std::string Editor::UriOf(const std::string& path) const {
  const std::vector<const OpenDocument*> open = documents_.OfPath(path);
  return open.empty() ? UriOfPath(path) : open.front()->uri;
}

Position Editor::PositionIn(const Source& source, std::size_t offset) const {
  Position position = PositionAt(source, offset, abilities.encoding);
  const bool isMarked = position.line == 0 && source.MarkSize() > 0;
  if (isMarked && !documents_.OfPath(source.Path()).empty())
    position.character += UnitsIn(kMark, abilities.encoding);
  return position;
}

Json Editor::RangeOf(const Source& source, Span span) const {
  return ToJson(Range{PositionIn(source, span.begin), PositionIn(source, span.end)});
}

Json Editor::LocationOf(const Source& source, Span span) const {
  return {{"uri", UriOf(source.Path())}, {"range", RangeOf(source, span)}};
}

std::size_t Editor::OffsetIn(const OpenDocument& document, const Json& position) const {
  const std::size_t offset = document.text.OffsetAt(ReadPosition(position), abilities.encoding);
  const bool isMarked =
      Workspace::IsManifest(document.path) && document.text.Text().starts_with(kMark);
  return offset - std::min(offset, isMarked ? kMark.size() : 0);
}

Json Editor::TextEdits(const FileEdits& edits) const {
  Json json = Json::array();
  for (const Edit& edit : edits.edits)
    json.push_back({{"range", RangeOf(*edits.source, edit.span)}, {"newText", edit.text}});
  return json;
}

Json Editor::WorkspaceEdit(const std::vector<FileEdits>& edits) const {
  if (!abilities.versionedEdits) {
    Json changes = Json::object();
    for (const FileEdits& file : edits)
      changes[UriOf(file.source->Path())] = TextEdits(file);
    return {{"changes", std::move(changes)}};
  }
  Json changes = Json::array();
  for (const FileEdits& file : edits) {
    const std::vector<const OpenDocument*> open = documents_.OfPath(file.source->Path());
    const Json version = open.empty() ? Json() : Json(open.front()->version);
    changes.push_back(
        {{"textDocument", {{"uri", UriOf(file.source->Path())}, {"version", version}}},
         {"edits", TextEdits(file)}});
  }
  return {{"documentChanges", std::move(changes)}};
}

}  // namespace tool::lsp
