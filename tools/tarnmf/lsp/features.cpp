// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/features.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <string>
#include <utility>

#include "tools/tarnmf/lsp/code_actions.h"
#include "tools/tarnmf/lsp/completion.h"
#include "tools/tarnmf/lsp/hover.h"
#include "tools/tarnmf/lsp/rename.h"
#include "tools/tarnmf/lsp/symbols.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

// As the protocol numbers them.
int KindNumber(CompletionItem::Kind kind) {
  switch (kind) {
    case CompletionItem::Kind::kElement:
      return 7;  // class
    case CompletionItem::Kind::kAttribute:
      return 10;  // property
    case CompletionItem::Kind::kWord:
      return 12;  // value
    case CompletionItem::Kind::kName:
      return 18;  // reference
    case CompletionItem::Kind::kEndTag:
      break;
  }
  return 14;  // keyword
}

Json ToJson(const CompletionItem& item, std::size_t order, const Manifest& manifest,
            const Editor& editor) {
  Json json = {
      {"label", item.label},
      {"kind", KindNumber(item.kind)},
      {"sortText", fmt::format("{:05}", order)},
      {"filterText", item.filter},
      {"textEdit",
       {{"range", editor.RangeOf(manifest.source, item.replaced)}, {"newText", item.newText}}}};
  if (!item.detail.empty()) json["detail"] = item.detail;
  if (!item.documentation.empty()) json["documentation"] = item.documentation;
  if (editor.abilities.snippets) json["insertTextFormat"] = 2;
  return json;
}

Json NestedSymbol(const Symbol& symbol, const Source& source, const Editor& editor) {
  Json json = {{"name", symbol.name},
               {"kind", static_cast<int>(symbol.kind)},
               {"range", editor.RangeOf(source, symbol.span)},
               {"selectionRange", editor.RangeOf(source, symbol.nameSpan)},
               {"children", Json::array()}};
  if (!symbol.detail.empty()) json["detail"] = symbol.detail;
  for (const Symbol& child : symbol.children)
    json["children"].push_back(NestedSymbol(child, source, editor));
  return json;
}

// Each with what is in it, in one list.
void AddFlat(const Symbol& symbol, const std::string& container, const Source& source,
             const Editor& editor, const std::function<bool(const Symbol&)>& isWanted,
             Json& symbols) {
  if (isWanted(symbol)) {
    Json& json =
        symbols.emplace_back(Json{{"name", symbol.name},
                                  {"kind", static_cast<int>(symbol.kind)},
                                  {"location", editor.LocationOf(source, symbol.nameSpan)}});
    if (!container.empty()) json["containerName"] = container;
  }
  for (const Symbol& child : symbol.children)
    AddFlat(child, symbol.name, source, editor, isWanted, symbols);
}

}  // namespace

Json Features::Answer(std::string_view method, const Json& params) {
  constexpr std::pair<std::string_view, Json (Features::*)(const Json&)> kHandlers[] = {
      {"textDocument/completion", &Features::Complete},
      {"textDocument/hover", &Features::Hover},
      {"textDocument/definition", &Features::Definition},
      {"textDocument/references", &Features::References},
      {"textDocument/prepareRename", &Features::PrepareRename},
      {"textDocument/rename", &Features::Rename},
      {"textDocument/documentSymbol", &Features::DocumentSymbols},
      {"textDocument/codeAction", &Features::CodeActions},
      {"workspace/symbol", &Features::WorkspaceSymbols},
  };
  for (const auto& [name, handler] : kHandlers) {
    if (name == method) return (this->*handler)(params);
  }
  throw RequestError(ErrorCode::kMethodNotFound, fmt::format("there is no method {}", method));
}

// ---- Places -------------------------------------------------------------------------------------

// Null for a document that is not served.
const OpenDocument* Features::DocumentOf(const Json& params) {
  return documents_.Find(Text(Member(params, "textDocument", "uri")));
}

std::optional<Features::Spot> Features::SpotOf(const Json& params) {
  const OpenDocument* const document = DocumentOf(params);
  if (document == nullptr || !Workspace::IsManifest(document->path)) return std::nullopt;
  return Spot{workspace_.ManifestAt(document->path),
              editor_.OffsetIn(*document, Member(params, "position"))};
}

Features::Surroundings Features::SurroundingsOf(const Manifest& manifest) {
  Surroundings around;
  const Process* const process = workspace_.ProcessWith(manifest.source.Path());
  if (process == nullptr) return around;
  around.loadpoints = workspace_.ManifestsOf(*process);
  around.names = NamesIn(around.loadpoints);
  for (std::size_t i = 0; i < around.loadpoints.size(); ++i) {
    for (const auto& each : around.loadpoints[i]) {
      if (each->source.Path() == manifest.source.Path()) around.home = i;
    }
  }
  return around;
}

Json Features::LocationOf(const Occurrence& name) const {
  return editor_.LocationOf(name.manifest->source, name.span);
}

// ---- Requests -----------------------------------------------------------------------------------

Json Features::Complete(const Json& params) {
  const std::optional<Spot> spot = SpotOf(params);
  if (!spot) return nullptr;
  const Surroundings around = SurroundingsOf(*spot->manifest);
  Json items = Json::array();
  for (const CompletionItem& item : lsp::Complete(*spot->manifest, spot->offset, around.names,
                                                  around.home, editor_.abilities.snippets))
    items.push_back(ToJson(item, items.size(), *spot->manifest, editor_));
  return items;
}

Json Features::Hover(const Json& params) {
  const std::optional<Spot> spot = SpotOf(params);
  if (!spot) return nullptr;
  const bool asMarkdown = editor_.abilities.markdown;
  const std::optional<HoverText> hover =
      HoverAt(*spot->manifest, spot->offset, SurroundingsOf(*spot->manifest).names, asMarkdown);
  if (!hover) return nullptr;
  return {{"contents", {{"kind", asMarkdown ? "markdown" : "plaintext"}, {"value", hover->text}}},
          {"range", editor_.RangeOf(spot->manifest->source, hover->span)}};
}

// The declarations of a name. From a declaration it leads to the others, such as the other half of a
// class.
Json Features::Definition(const Json& params) {
  const std::optional<Spot> spot = SpotOf(params);
  if (!spot) return nullptr;
  const Surroundings around = SurroundingsOf(*spot->manifest);
  const Occurrence* const name = NameAt(around.names, spot->manifest->source.Path(), spot->offset);
  if (name == nullptr) return nullptr;
  Json locations = Json::array();
  for (const Occurrence* each : SameName(around.names, *name)) {
    if (each->isDeclaration && each != name) locations.push_back(LocationOf(*each));
  }
  if (locations.empty() && name->isDeclaration) locations.push_back(LocationOf(*name));
  return locations;
}

Json Features::References(const Json& params) {
  const std::optional<Spot> spot = SpotOf(params);
  if (!spot) return nullptr;
  const Surroundings around = SurroundingsOf(*spot->manifest);
  const Occurrence* const name = NameAt(around.names, spot->manifest->source.Path(), spot->offset);
  if (name == nullptr) return nullptr;
  const bool withDeclarations = IsTrue(Member(params, "context", "includeDeclaration"));
  Json locations = Json::array();
  for (const Occurrence* each : SameName(around.names, *name)) {
    if (withDeclarations || !each->isDeclaration) locations.push_back(LocationOf(*each));
  }
  return locations;
}

Json Features::PrepareRename(const Json& params) {
  const std::optional<Spot> spot = SpotOf(params);
  if (!spot) return nullptr;
  const Surroundings around = SurroundingsOf(*spot->manifest);
  const Occurrence* const name = NameAt(around.names, spot->manifest->source.Path(), spot->offset);
  if (name == nullptr || !CanBeRenamed(*name)) return nullptr;
  return {{"range", editor_.RangeOf(spot->manifest->source, name->span)},
          {"placeholder", name->name}};
}

Json Features::Rename(const Json& params) {
  const std::string& newName = Text(Member(params, "newName"));
  const std::optional<Spot> spot = SpotOf(params);
  if (!spot) return nullptr;
  const Surroundings around = SurroundingsOf(*spot->manifest);
  const Occurrence* const name = NameAt(around.names, spot->manifest->source.Path(), spot->offset);
  if (name == nullptr) throw RequestError(ErrorCode::kFailed, "there is no name here");
  return editor_.WorkspaceEdit(lsp::Rename(around.loadpoints, around.names, *name, newName));
}

Json Features::DocumentSymbols(const Json& params) {
  const OpenDocument* const document = DocumentOf(params);
  if (document == nullptr || !Workspace::IsManifest(document->path)) return nullptr;
  const auto manifest = workspace_.ManifestAt(document->path);
  Json symbols = Json::array();
  for (const Symbol& symbol : SymbolsOf(*manifest)) {
    if (editor_.abilities.nestedSymbols) {
      symbols.push_back(NestedSymbol(symbol, manifest->source, editor_));
    } else {
      AddFlat(
          symbol, "", manifest->source, editor_, [](const Symbol&) { return true; }, symbols);
    }
  }
  return symbols;
}

Json Features::WorkspaceSymbols(const Json& params) {
  const std::string& query = Text(Member(params, "query"));
  const auto isWanted = [&](const Symbol& symbol) { return IsFoundBy(query, symbol.name); };
  Json symbols = Json::array();
  for (const auto& process : workspace_.Processes()) {
    for (const auto& manifests : workspace_.ManifestsOf(*process)) {
      for (const auto& manifest : manifests) {
        for (const Symbol& symbol : SymbolsOf(*manifest))
          AddFlat(symbol, "", manifest->source, editor_, isWanted, symbols);
      }
    }
  }
  return symbols;
}

Json Features::CodeActions(const Json& params) {
  const OpenDocument* const document = DocumentOf(params);
  if (document == nullptr) return nullptr;
  workspace_.Refresh();
  return lsp::CodeActions(*document, params, editor_, workspace_);
}

}  // namespace tool::lsp
