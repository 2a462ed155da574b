// SPDX-License-Identifier: Apache-2.0
#include "check/module_files.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/filesystem.h"
#include "platform/runtime.h"
#include "support/ignore_refusal.h"

namespace tarnmf::check {

std::string LoadPointPathOf(const ModuleDeclaration& module, const LoadPoint& loadpoint) {
  return module.loadpoint ? module.loadpoint->text : loadpoint.path;
}

const ImplementationDeclaration& SelectedImplementation(const ModuleDeclaration& module) {
  const auto& implementations = module.implementations;
  const auto native = std::find_if(implementations.begin() + 1, implementations.end(),
                                   [](const ImplementationDeclaration& implementation) {
                                     return implementation.machinetype &&
                                            implementation.machinetype->text == btkGetVexMachine();
                                   });
  return native != implementations.end() ? *native : implementations.front();
}

FileSearch SearchFile(const LoadPoint& loadpoint, const ModuleDeclaration& module,
                      const ImplementationDeclaration& implementation, const std::string& name,
                      const std::string& path) {
  const std::uint32_t flags = (implementation.forcePath ? std::uint32_t{kBtkForcePath} : 0U) |
                              (implementation.explicitName ? std::uint32_t{kBtkExplicitName} : 0U);
  const btkModuleVersionT version{};
  btkHostDlmManager manager;
  UniIdT scope{};
  // The embedded manager takes every load point.
  IgnoreRefusal(manager.RegisterProcessLoadpoint(
      &scope, btkFSPath(loadpoint.processPath.c_str()).WideText()));
  btkZString file;
  // What became of it is in the resolution.
  IgnoreRefusal(manager.ResolveModule(
      &file, module.id ? module.id->text.c_str() : "",
      module.type ? module.type->text.c_str() : nullptr, btkFSPath(name.c_str()).WideText(),
      btkFSPath(path.c_str()).WideText(), flags,
      btkFSPath(LoadPointPathOf(module, loadpoint).c_str()).WideText(), "", 0, &version));
  const btkHostResolutionT& resolution = manager.Resolutions().back();
  return {resolution.file,
          {resolution.tried.begin(), resolution.tried.end()},
          resolution.refusal,
          resolution.reason};
}

ModuleFile FindModuleFile(const LoadPoint& loadpoint, const ModuleDeclaration& module) {
  const auto search = [&](const ImplementationDeclaration& implementation) {
    return implementation.name
               ? SearchFile(loadpoint, module, implementation, implementation.name->text,
                            implementation.path ? implementation.path->text : "")
               : FileSearch();
  };
  ModuleFile found{&SelectedImplementation(module), {}};
  found.search = search(*found.implementation);
  const ImplementationDeclaration& own = module.implementations.front();
  if (!found.search.file.empty() || found.implementation == &own) return found;
  FileSearch other = search(own);
  other.tried.insert(other.tried.begin(), found.search.tried.begin(), found.search.tried.end());
  if (other.refusal == kBtkHostAdmitted) {
    other.refusal = found.search.refusal;
    other.reason = std::move(found.search.reason);
  }
  return {&own, std::move(other)};
}

}  // namespace tarnmf::check
