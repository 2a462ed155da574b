// SPDX-License-Identifier: Apache-2.0
#include "check/file_rules.h"

#include <algorithm>
#include <fmt/format.h>
#include <initializer_list>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "check/given.h"
#include "check/module_files.h"
#include "check/names.h"
#include "check/paths.h"
#include "check/suggestions.h"
#include "check/wording.h"
#include "grammar/manifest.h"
#include "platform/filesystem.h"
#include "platform/host/system_names.h"
#include "platform/runtime.h"

namespace tarnmf::check {
namespace {

// Names that are compared in all to find what was meant.
constexpr std::size_t kMostCompared = 200'000;

// The search for the file of one implementation.
struct Search : FileSearch {
  const ImplementationDeclaration* implementation;
};

std::string WithSlashes(std::string text) {
  std::replace(text.begin(), text.end(), '\\', '/');
  return text;
}

// The place of what the value says; one that a document type gives is not written there.
bool IsWritten(const Manifest& manifest, const TextValue& value) {
  return manifest.source.Text(value.span) == value.text;
}

std::string NameOf(const ModuleDeclaration& module) {
  if (module.id) return "module " + Quoted(module.id->text);
  return module.isNested ? "the nested module" : "the module";
}

bool AreClear(const Manifest& manifest, NodeId node, const grammar::ElementT& element,
              std::initializer_list<std::string_view> attributes) {
  const GivenAttributes given(manifest.document, node, element);
  return std::all_of(attributes.begin(), attributes.end(),
                     [&](std::string_view name) { return given.IsClear(name); });
}

// Whether it can be made out which implementation is meant for this machine, and by which name.
// Where something else is wrong with it, nobody knows what is looked for.
bool IsClear(const Manifest& manifest, const ModuleDeclaration& module,
             const ImplementationDeclaration& selected) {
  const Document& document = manifest.document;
  if (!AreClear(manifest, module.node, grammar::kModule,
                {"name", "path", "explicitname", "forcepath", "type", "loadpoint"})) {
    return false;
  }
  if (&selected != &module.implementations.front()) {
    return AreClear(manifest, selected.node, grammar::kPlatformModule,
                    {"name", "path", "explicitname", "forcepath"});
  }
  for (const NodeId child : document.ChildrenOf(module.node)) {
    const bool isElement = document[child].kind == NodeKind::kElement;
    if (isElement && !ChildNamed(grammar::kModule, document.Name(child))) return false;
  }
  return std::all_of(
      module.implementations.begin() + 1, module.implementations.end(),
      [](const ImplementationDeclaration& each) { return each.machinetype.has_value(); });
}

class FileCheck {
 public:
  FileCheck(const LoadPoint& loadpoint, Files& files, std::vector<Finding>& findings)
      : loadpoint_(loadpoint), files_(files), findings_(findings) {}

  void Check(const Manifest& manifest, const ModuleDeclaration& module);

 private:
  // The module at hand, with its load point as the library has it.
  struct Module {
    const Manifest& manifest;
    const ModuleDeclaration& declaration;
    std::optional<std::string> loadpoint;

    Place At(Span span) const { return {&manifest.source, span}; }
  };

  Search SearchFile(const Module& module, const ImplementationDeclaration& implementation) const;
  bool TellBackslashes(const Module& module, const Search& search);
  void TellOutside(const Module& module, const Search& search);
  void TellMissing(const Module& module, const Search& search, const Search* own);
  void SuggestFile(Finding& finding, const Module& module, const Search& search);
  void SuggestName(Finding& finding, const Module& module,
                   const ImplementationDeclaration& implementation, std::string_view file);
  std::string Shown(const Module& module, const Search& search, const std::string& file) const;
  std::string ShownPlaces(const Module& module, const Search& search) const;
  const std::vector<std::string>& NamesIn(const std::string& directory);

  const LoadPoint& loadpoint_;
  Files& files_;
  std::vector<Finding>& findings_;
  std::map<std::string, std::vector<std::string>> names_;  // by directory
  std::size_t compared_ = 0;
};

// ---- Searching ---------------------------------------------------------------------------------

Search FileCheck::SearchFile(const Module& module,
                             const ImplementationDeclaration& implementation) const {
  return {
      check::SearchFile(loadpoint_, module.declaration, implementation, implementation.name->text,
                        implementation.path ? implementation.path->text : ""),
      &implementation};
}

// The implementation for this machine is used; when it has no file, the module's own.
void FileCheck::Check(const Manifest& manifest, const ModuleDeclaration& declaration) {
  Module module{manifest, declaration, LoadPointPathOf(declaration, loadpoint_)};
  if (module.loadpoint->empty()) module.loadpoint.reset();
  const auto& implementations = declaration.implementations;
  const ImplementationDeclaration& selected = SelectedImplementation(declaration);
  const bool isOwn = &selected == &implementations.front();
  // A module of no load point has no file to look for.
  if (!selected.name || (!module.loadpoint && isOwn)) return;
  if (!IsClear(manifest, declaration, selected)) return;
  const Search search = SearchFile(module, selected);
  if (search.refusal == kBtkHostLeadsUp) return TellOutside(module, search);
  // What is relative to a process that is not known may be anywhere.
  if (search.tried.empty()) return;
  if (!search.file.empty() || TellBackslashes(module, search)) return;
  if (isOwn || !implementations.front().name) return TellMissing(module, search, nullptr);
  const Search own = SearchFile(module, implementations.front());
  TellMissing(module, search, &own);
}

// ---- Paths -------------------------------------------------------------------------------------

void FileCheck::TellOutside(const Module& module, const Search& search) {
  const ImplementationDeclaration& implementation = *search.implementation;
  const bool byPath =
      implementation.path && implementation.path->text.find("..") != std::string::npos;
  const TextValue& value = byPath ? *implementation.path : *implementation.name;
  findings_.push_back(Found(Rule::kOutsideLoadpoint, kBtkOk, module.At(value.span),
                            fmt::format("the file of {} is not looked for: {}",
                                        NameOf(module.declaration), search.reason)));
}

// True when something was told.
bool FileCheck::TellBackslashes(const Module& module, const Search& search) {
  const ImplementationDeclaration& implementation = *search.implementation;
  const std::optional<TextValue> values[] = {implementation.path, implementation.name};
  const auto hasBackslash = [](const std::optional<TextValue>& value) {
    return value && value->text.find('\\') != std::string::npos;
  };
  if (std::none_of(std::begin(values), std::end(values), hasBackslash)) return false;
  const bool exists =
      !check::SearchFile(loadpoint_, module.declaration, implementation,
                         WithSlashes(implementation.name->text),
                         implementation.path ? WithSlashes(implementation.path->text) : "")
           .file.empty();
  for (const std::optional<TextValue>& value : values) {
    if (!hasBackslash(value)) continue;
    Finding finding =
        Found(Rule::kBackslash, kBtkOk, module.At(value->span),
              fmt::format("{}: a backslash is no separator here", Quoted(value->text)));
    if (IsWritten(module.manifest, *value)) {
      finding.suggestions.push_back(Replace(value->span, value->text, WithSlashes(value->text)));
      finding.suggestions.back().safe = exists;
    }
    findings_.push_back(std::move(finding));
  }
  return true;
}

// Absolute paths that a manifest gives are told as they stand.
std::string FileCheck::Shown(const Module& module, const Search& search,
                             const std::string& file) const {
  const std::optional<TextValue>& given =
      search.implementation->forcePath ? search.implementation->path : module.declaration.loadpoint;
  const bool stands = given && IsAbsolutePath(given->text);
  return stands ? file : ShownPath(loadpoint_, file);
}

// ---- Missing files -----------------------------------------------------------------------------

std::string FileCheck::ShownPlaces(const Module& module, const Search& search) const {
  std::string places;
  for (const std::string& file : search.tried)
    places += (places.empty() ? "" : ", ") + Shown(module, search, file);
  return places;
}

// `own` is the search for the module's own file after that for this machine's.
void FileCheck::TellMissing(const Module& module, const Search& search, const Search* own) {
  const ModuleDeclaration& declared = module.declaration;
  const std::string machine = fmt::format("machine type {}", Quoted(btkGetVexMachine()));
  const std::string name = NameOf(declared);
  std::string message =
      fmt::format("the file of {} is not there: looked for {}", name, ShownPlaces(module, search));
  if (own != nullptr && !own->file.empty()) {
    message = fmt::format("the file of {} for {} is not there, and its own is used: looked for {}",
                          name, machine, ShownPlaces(module, search));
  } else if (own != nullptr && own->tried != search.tried) {
    message += ", " + ShownPlaces(module, *own);
  }
  Finding finding = Found(Rule::kFileMissing, kBtkOk, module.At(search.implementation->name->span),
                          std::move(message));
  SuggestFile(finding, module, search);
  // With a file of nearly that name it is one for this machine, which has another name.
  const bool isForOthers = own == nullptr && declared.implementations.size() > 1;
  if (isForOthers && finding.suggestions.empty()) {
    finding = Found(Rule::kNoImplementation, kBtkOk,
                    module.At(module.manifest.document[declared.node].name),
                    fmt::format("{} has no implementation for {}, and its own file is not there: "
                                "looked for {}",
                                name, machine, ShownPlaces(module, search)));
  }
  findings_.push_back(std::move(finding));
}

const std::vector<std::string>& FileCheck::NamesIn(const std::string& directory) {
  const auto [place, isNew] = names_.try_emplace(directory);
  if (isNew) place->second = files_.NamesIn(directory);
  return place->second;
}

void FileCheck::SuggestFile(Finding& finding, const Module& module, const Search& search) {
  const std::string& name = search.implementation->name->text;
  CloseNames close(FileNameOf(search.tried.front()));
  std::string asItStands;  // the name without what the platform puts around it
  for (const std::string& file : search.tried) {
    if (compared_ > kMostCompared) break;
    const std::vector<std::string>& names = NamesIn(DirectoryOf(file));
    compared_ += names.size() + 1;
    if (std::binary_search(names.begin(), names.end(), name)) asItStands = name;
    for (const std::string& other : names)
      close.Offer(other);
  }
  std::vector<std::string_view> meant = close.FewBest();
  if (!asItStands.empty()) meant = {asItStands};
  finding.message += DidYouMean(meant, Quoted);
  for (const std::string_view file : meant)
    SuggestName(finding, module, *search.implementation, file);
}

// Only where the value of "name" for the file is clear.
void FileCheck::SuggestName(Finding& finding, const Module& module,
                            const ImplementationDeclaration& implementation,
                            std::string_view file) {
  const TextValue& name = *implementation.name;
  if (!IsWritten(module.manifest, name) || file.find_first_of("&<>\"'") != std::string_view::npos) {
    return;
  }
  std::string_view plain = file;
  if (!implementation.explicitName && !module.declaration.type) {
    const std::string_view prefix = kSystemNames.libraryPrefix;
    const std::string_view suffix = kSystemNames.librarySuffix;
    if (!plain.starts_with(prefix) || !plain.ends_with(suffix) ||
        plain.size() <= prefix.size() + suffix.size()) {
      return;
    }
    plain = plain.substr(prefix.size(), plain.size() - prefix.size() - suffix.size());
  }
  if (plain != name.text)
    finding.suggestions.push_back(Replace(name.span, name.text, std::string(plain)));
}

}  // namespace

void CheckFiles(const LoadPoint& loadpoint, Files& files, std::vector<Finding>& findings) {
  if (loadpoint.role == LoadPoint::Role::kUnknown || loadpoint.path.empty()) return;
  if (!FitsProcess(loadpoint.path)) {
    const bool isProcess = loadpoint.role == LoadPoint::Role::kProcess;
    findings.push_back(Found(
        Rule::kPathTooLong, kBtkOk, {&loadpoint.directory, {}},
        fmt::format("{}: its path has more than {} UTF-16 units",
                    isProcess ? "the process has no load point"
                              : "a process that has this as its own load point would have none",
                    kProcessPathUnits - 1)));
    if (isProcess) return;
  }
  // Where the folder itself is not there, its files need not be told one by one.
  if (!files.IsDirectory(loadpoint.path)) return;
  FileCheck check(loadpoint, files, findings);
  for (const auto& manifest : loadpoint.manifests) {
    for (const ModuleDeclaration& module : manifest->declarations.modules) {
      // What reaches up to the fault of a document is not all there.
      const bool isWhole = manifest->document[module.node].span.end < manifest->trustedEnd;
      if (manifest->isWellFormed || isWhole) check.Check(*manifest, module);
    }
  }
}

}  // namespace tarnmf::check
