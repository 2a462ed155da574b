#include "check/module_files.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include "platform/filesystem.h"
#include "platform/host/embedded_dlm.h"
#include "platform/runtime.h"

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

FileSearch SearchFile(const ModuleDeclaration& module,
                      const ImplementationDeclaration& implementation, const std::string& loadpoint,
                      const std::string& name, const std::string& path) {
  const std::uint32_t flags = (implementation.forcePath ? std::uint32_t{kBtkForcePath} : 0U) |
                              (implementation.explicitName ? std::uint32_t{kBtkExplicitName} : 0U);
  const btkModuleVersionT version{};
  btkHostDlmManager manager;
  btkZString file;
  const BtkErrorT code =
      manager.ResolveModule(&file, module.id ? module.id->text.c_str() : "",
                            module.type ? module.type->text.c_str() : nullptr,
                            btkFSPath(name.c_str()).WideText(), btkFSPath(path.c_str()).WideText(),
                            flags, btkFSPath(loadpoint.c_str()).WideText(), "", 0, &version);
  return {code == kBtkOk ? file.Text() : "", manager.Resolutions().back().tried};
}

ModuleFile FindModuleFile(const LoadPoint& loadpoint, const ModuleDeclaration& module) {
  const std::string path = LoadPointPathOf(module, loadpoint);
  const auto search = [&](const ImplementationDeclaration& implementation) {
    return implementation.name ? SearchFile(module, implementation, path, implementation.name->text,
                                            implementation.path ? implementation.path->text : "")
                               : FileSearch();
  };
  ModuleFile found{&SelectedImplementation(module), {}};
  found.search = search(*found.implementation);
  const ImplementationDeclaration& own = module.implementations.front();
  if (!found.search.file.empty() || found.implementation == &own) return found;
  FileSearch other = search(own);
  std::move(other.tried.begin(), other.tried.end(), std::back_inserter(found.search.tried));
  return {&own, {std::move(other.file), std::move(found.search.tried)}};
}

}  // namespace tarnmf::check
