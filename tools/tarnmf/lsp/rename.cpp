// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/rename.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

#include "check/references.h"
#include "check/wording.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

[[noreturn]] void Refuse(const std::string& sentence) {
  throw RequestError(ErrorCode::kFailed, sentence);
}

std::string PlaceOf(const Occurrence& name) {
  const Source& source = name.manifest->source;
  return fmt::format("{}:{}", source.Path(), source.At(name.span.begin).line);
}

bool HasControls(std::string_view text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x20U || c == 0x7F; });
}

void RequireWhole(const LoadPoints& loadpoints, const std::set<std::size_t>& touched) {
  for (const std::size_t loadpoint : touched) {
    for (const auto& manifest : loadpoints[loadpoint]) {
      if (manifest->isWellFormed) continue;
      Refuse(fmt::format("{} is not well-formed: what it refers to is not known",
                         manifest->source.Path()));
    }
  }
}

void RequireFree(const std::vector<Occurrence>& names, const std::set<std::size_t>& touched,
                 const std::string& newName) {
  const auto taken = std::find_if(names.begin(), names.end(), [&](const Occurrence& each) {
    return each.kind == NameKind::kModule && each.isDeclaration && each.name == newName &&
           touched.contains(each.loadpoint);
  });
  if (taken != names.end())
    Refuse(fmt::format("there is a module {} already: {}", Quoted(newName), PlaceOf(*taken)));
}

}  // namespace

bool CanBeRenamed(const Occurrence& name) {
  return name.kind == NameKind::kModule;
}

std::vector<FileEdits> Rename(const LoadPoints& loadpoints, const std::vector<Occurrence>& names,
                              const Occurrence& name, const std::string& newName) {
  if (!CanBeRenamed(name)) Refuse("only the ids of modules can be renamed");
  if (newName.empty()) Refuse("the id of a module cannot be empty");
  if (HasControls(newName)) Refuse("the id of a module is one line of text");
  if (newName == name.name) return {};
  const std::vector<const Occurrence*> same = SameName(names, name);
  std::set<std::size_t> touched;
  for (const Occurrence* each : same)
    touched.insert(each->loadpoint);
  RequireWhole(loadpoints, touched);
  RequireFree(names, touched, newName);

  std::vector<FileEdits> edits;
  for (const Occurrence* each : same) {
    const Source* const source = &each->manifest->source;
    auto file = std::find_if(edits.begin(), edits.end(),
                             [&](const FileEdits& known) { return known.source == source; });
    if (file == edits.end()) file = edits.insert(edits.end(), {source, {}});
    file->edits.push_back({each->span, EscapedValue(newName)});
  }
  return edits;
}

}  // namespace tool::lsp
