// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/names.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <utility>

#include "check/declared.h"
#include "check/wording.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

// Collects the names of one manifest.
class Collector {
 public:
  Collector(std::size_t loadpoint, std::shared_ptr<const Manifest> manifest,
            std::vector<Occurrence>& names)
      : loadpoint_(loadpoint), manifest_(std::move(manifest)), names_(names) {}

  void Collect() {
    const Declarations& declarations = manifest_->declarations;
    for (const ModuleDeclaration& module : declarations.modules)
      AddModule(module);
    for (const ClassDeclaration& declaration : declarations.classes)
      AddClass(declaration);
    for (const RunnableDeclaration& runnable : declarations.runnables)
      AddRunnable(runnable);
  }

 private:
  static constexpr bool kDeclares = true;
  static constexpr bool kRefers = false;

  void Add(NameKind kind, const std::optional<TextValue>& value, bool isDeclaration, NodeId node) {
    if (value && !value->text.empty()) Add(kind, value->text, value->span, isDeclaration, node);
  }
  void Add(NameKind kind, const std::optional<IdValue>& value, bool isDeclaration, NodeId node) {
    if (value) Add(kind, IdText(value->id), value->span, isDeclaration, node);
  }
  void Add(NameKind kind, std::string name, Span span, bool isDeclaration, NodeId node) {
    names_.push_back({kind, std::move(name), isDeclaration, loadpoint_, manifest_, span, node});
  }

  void AddModule(const ModuleDeclaration& module) {
    Add(NameKind::kModule, module.id, kDeclares, module.node);
    for (const ImplementationDeclaration& implementation : module.implementations) {
      for (const PreloadDeclaration& preload : implementation.preloads)
        Add(NameKind::kService, preload.svcid, kRefers, preload.node);
    }
  }

  void AddClass(const ClassDeclaration& declaration) {
    Add(NameKind::kClass, declaration.id, kDeclares, declaration.node);
    for (const SideDeclaration& side : declaration.sides) {
      if (side.IsThere()) Add(NameKind::kModule, side.moduleref, kRefers, side.node);
    }
    const NodeId service = declaration.sides[kMfServiceSide].node;
    // A worker's id stands in for the one that it does not give.
    const bool isWritten =
        declaration.svcid && !(declaration.id && declaration.svcid->span == declaration.id->span);
    if (isWritten) Add(NameKind::kService, declaration.svcid, kDeclares, service);
    Add(NameKind::kService, declaration.xsid, kRefers, service);
    Add(NameKind::kServiceName, declaration.xsname, kRefers, service);
  }

  void AddRunnable(const RunnableDeclaration& runnable) {
    Add(NameKind::kModule, runnable.moduleref, kRefers, runnable.node);
    for (const ServiceDeclaration& service : runnable.services) {
      Add(NameKind::kService, service.id, kDeclares, service.node);
      Add(NameKind::kServiceName, service.commonname, kDeclares, service.node);
    }
  }

  const std::size_t loadpoint_;
  const std::shared_ptr<const Manifest> manifest_;
  std::vector<Occurrence>& names_;
};

bool IsSame(const Occurrence& one, const Occurrence& other) {
  return one.kind == other.kind && one.name == other.name;
}

}  // namespace

std::vector<Occurrence> NamesIn(const LoadPoints& loadpoints) {
  std::vector<Occurrence> names;
  for (std::size_t i = 0; i < loadpoints.size(); ++i) {
    for (const auto& manifest : loadpoints[i])
      Collector(i, manifest, names).Collect();
  }
  return names;
}

const Occurrence* NameAt(const std::vector<Occurrence>& names, std::string_view path,
                         std::size_t offset) {
  const auto found = std::find_if(names.begin(), names.end(), [&](const Occurrence& name) {
    return offset >= name.span.begin && offset <= name.span.end && name.Path() == path;
  });
  return found != names.end() ? &*found : nullptr;
}

std::vector<const Occurrence*> SameName(const std::vector<Occurrence>& names,
                                        const Occurrence& name) {
  std::vector<const Occurrence*> same;
  std::set<std::size_t> homes;  // load points that declare the module
  for (const Occurrence& each : names) {
    if (!IsSame(each, name)) continue;
    same.push_back(&each);
    if (each.kind == NameKind::kModule && each.isDeclaration) homes.insert(each.loadpoint);
  }
  const bool isAtHome = homes.contains(name.loadpoint);
  std::erase_if(same, [&](const Occurrence* each) {
    return isAtHome && homes.contains(each->loadpoint) && each->loadpoint != name.loadpoint;
  });
  std::stable_partition(same.begin(), same.end(),
                        [](const Occurrence* each) { return each->isDeclaration; });
  return same;
}

std::string Described(const Occurrence& declaration) {
  switch (declaration.kind) {
    case NameKind::kModule:
      return fmt::format("module {}", Quoted(declaration.name));
    case NameKind::kService:
    case NameKind::kServiceName:
      return fmt::format("service {}", Quoted(declaration.name));
    case NameKind::kClass:
      return fmt::format("class {}", Quoted(declaration.name));
  }
  return "";
}

}  // namespace tool::lsp
