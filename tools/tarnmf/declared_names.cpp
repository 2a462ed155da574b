// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/declared_names.h"

#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "check/declared.h"
#include "check/files.h"
#include "check/installation.h"
#include "platform/unique_id.h"

namespace tool {
namespace {

using namespace tarnmf::check;

// Words reach the tool as they are written, while the shell would put the home directory there.
std::string WithHome(const std::string& path) {
  const char* const home = path.starts_with("~/") ? std::getenv("HOME") : nullptr;
  return home == nullptr ? path : home + path.substr(1);
}

std::vector<std::unique_ptr<LoadPoint>> LoadPointsOf(const CommandLine& line) {
  std::vector<std::unique_ptr<LoadPoint>> loadpoints;
  DiskFiles files;
  for (const auto& [option, value] : line.given) {
    const std::string name = option->get_name();
    const bool isProcess = name == "--loadpoint";
    if (!isProcess && name != "--add" && name != "DIR") continue;
    const std::string directory = WithHome(value);
    if (!files.IsDirectory(directory)) continue;
    loadpoints.push_back(isProcess ? ReadProcessLoadPoint(directory, files)
                                   : ReadInstallation(directory, files));
  }
  return loadpoints;
}

// `collect` is given each manifest's declarations and the list that candidates go to.
template <class Collect>
std::vector<Candidate> Declared(const CommandLine& line, Collect collect) {
  std::vector<Candidate> candidates;
  for (const auto& loadpoint : LoadPointsOf(line)) {
    for (const auto& manifest : loadpoint->manifests)
      collect(manifest->declarations, candidates);
  }
  return candidates;
}

std::string TextOf(const std::optional<TextValue>& value) {
  return value ? value->text : "";
}

void Add(std::vector<Candidate>& candidates, std::string text, std::string description) {
  if (!text.empty()) candidates.push_back({std::move(text), std::move(description)});
}

void Add(std::vector<Candidate>& candidates, const std::optional<IdValue>& id,
         std::string description) {
  if (id) candidates.push_back({IdText(id->id), std::move(description)});
}

}  // namespace

std::vector<Candidate> DeclaredClasses(const CommandLine& line) {
  return Declared(line, [](const Declarations& declarations, std::vector<Candidate>& candidates) {
    for (const ClassDeclaration& declared : declarations.classes)
      Add(candidates, TextOf(declared.commonname), declared.id ? IdText(declared.id->id) : "");
  });
}

std::vector<Candidate> DeclaredModules(const CommandLine& line) {
  return Declared(line, [](const Declarations& declarations, std::vector<Candidate>& candidates) {
    for (const ModuleDeclaration& module : declarations.modules)
      Add(candidates, TextOf(module.id), TextOf(module.implementations.front().name));
  });
}

std::vector<Candidate> DeclaredServices(const CommandLine& line) {
  return Declared(line, [](const Declarations& declarations, std::vector<Candidate>& candidates) {
    for (const RunnableDeclaration& runnable : declarations.runnables) {
      for (const ServiceDeclaration& service : runnable.services)
        Add(candidates, service.id, TextOf(service.commonname));
    }
  });
}

std::vector<Candidate> DeclaredOptions(const CommandLine& line) {
  return Declared(line, [](const Declarations& declarations, std::vector<Candidate>& candidates) {
    for (const ModuleDeclaration& module : declarations.modules) {
      for (const ImplementationDeclaration& implementation : module.implementations) {
        for (const PreloadDeclaration& preload : implementation.preloads)
          Add(candidates, preload.optionid, TextOf(module.id));
      }
    }
  });
}

std::vector<Candidate> DeclaredScopes(const CommandLine& line) {
  std::vector<Candidate> candidates;
  for (const auto& loadpoint : LoadPointsOf(line)) {
    if (!btkUniIdIsNull(loadpoint->scope))
      Add(candidates, IdText(loadpoint->scope), loadpoint->directory.Path());
  }
  return candidates;
}

}  // namespace tool
