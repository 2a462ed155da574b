#include "check/module_files.h"

#include <algorithm>
#include <optional>

#include "platform/filesystem.h"
#include "platform/host/embedded_dlm.h"
#include "platform/runtime.h"

namespace tarnmf::check {
namespace {

class FileSearch {
 public:
  FileSearch(const LoadPoint& loadpoint, const ModuleDeclaration& module)
      : module_(module), loadpoint_(loadpoint.path.c_str()) {
    if (module.loadpoint) loadpoint_ = btkFSPath(module.loadpoint->text.c_str());
  }

  // True when there is a file.
  bool Try(const ImplementationDeclaration& implementation) {
    found_.implementation = &implementation;
    if (!implementation.name) return false;
    const std::uint32_t flags =
        (implementation.forcePath ? std::uint32_t{kBtkForcePath} : 0U) |
        (implementation.explicitName ? std::uint32_t{kBtkExplicitName} : 0U);
    const btkFSPath name(implementation.name->text.c_str());
    const btkFSPath path(implementation.path ? implementation.path->text.c_str() : "");
    const btkModuleVersionT version{};
    btkHostDlmManager manager;
    btkZString file;
    const BtkErrorT code = manager.ResolveModule(
        &file, "", module_.type ? module_.type->text.c_str() : nullptr, name.WideText(),
        path.WideText(), flags, loadpoint_.WideText(), "", 0, &version);
    const std::vector<std::string>& tried = manager.Resolutions().back().tried;
    found_.tried.insert(found_.tried.end(), tried.begin(), tried.end());
    if (code == kBtkOk) found_.path = file.Text();
    return code == kBtkOk;
  }

  ModuleFile Take() { return std::move(found_); }

 private:
  const ModuleDeclaration& module_;
  btkFSPath loadpoint_;
  ModuleFile found_;
};

}  // namespace

ModuleFile FindModuleFile(const LoadPoint& loadpoint, const ModuleDeclaration& module) {
  FileSearch search(loadpoint, module);
  const auto& implementations = module.implementations;
  const auto native = std::find_if(implementations.begin() + 1, implementations.end(),
                                   [](const ImplementationDeclaration& implementation) {
                                     return implementation.machinetype &&
                                            implementation.machinetype->text == btkGetVexMachine();
                                   });
  if (native == implementations.end() || !search.Try(*native)) search.Try(implementations.front());
  return search.Take();
}

}  // namespace tarnmf::check
