// SPDX-License-Identifier: Apache-2.0
#include "check/declarations.h"

#include "check/given.h"
#include "check/names.h"
#include "grammar/manifest.h"
#include "platform/dlm.h"

namespace tarnmf::check {
namespace {

using grammar::ElementT;

// Collects what the elements below the root declare. An element counts where the grammar admits it.
class Declarer {
 public:
  explicit Declarer(const Document& document) : document_(document) {}

  Declarations Take() { return std::move(declarations_); }

  // What stands below the root or in a list.
  void AddAll(NodeId node, const ElementT& element) {
    ForEachChild(node, element, [&](NodeId child, const ElementT& described) {
      if (&described == &grammar::kModule) {
        AddModule(child);
      } else if (&described == &grammar::kClass) {
        AddClass(child);
      } else if (&described == &grammar::kRunnable) {
        AddRunnable(child);
      } else {
        AddAll(child, described);
      }
    });
  }

 private:
  template <class Visit>
  void ForEachChild(NodeId node, const ElementT& element, Visit visit) const {
    for (NodeId child : document_.ChildrenOf(node)) {
      if (document_[child].kind != NodeKind::kElement) continue;
      const ElementT* const described = ChildNamed(element, document_.Name(child));
      if (described != nullptr) visit(child, *described);
    }
  }
  GivenAttributes Given(NodeId node, const ElementT& element) const {
    return GivenAttributes(document_, node, element);
  }

  void AddModule(NodeId node);
  void AddClass(NodeId node);
  void AddRunnable(NodeId node);
  ImplementationDeclaration Implementation(NodeId node, const ElementT& element) const;
  ImplementationDeclaration PlatformModule(NodeId node, const ImplementationDeclaration& own) const;
  PreloadDeclaration Preload(NodeId node) const;
  SideDeclaration Side(NodeId node, const ElementT& element, MfSideT side);
  void AddServiceSide(NodeId node, ClassDeclaration& declaration) const;
  ServiceDeclaration Service(NodeId node) const;

  const Document& document_;
  Declarations declarations_;
};

// ---- Modules -----------------------------------------------------------------------------------

PreloadDeclaration Declarer::Preload(NodeId node) const {
  const GivenAttributes given = Given(node, grammar::kPreload);
  PreloadDeclaration preload;
  preload.node = node;
  preload.name = given.Text("name");
  preload.svcid = given.Id("svcid");
  preload.optionid = given.Id("optionid");
  const std::int32_t implied = preload.svcid  ? kMfByService
                               : preload.name ? kMfByExecutable
                                              : kMfByNone;
  preload.by = given.Word("by").value_or(implied);
  return preload;
}

ImplementationDeclaration Declarer::Implementation(NodeId node, const ElementT& element) const {
  const GivenAttributes given = Given(node, element);
  ImplementationDeclaration implementation;
  implementation.node = node;
  implementation.name = given.Text("name");
  implementation.path = given.Text("path");
  implementation.explicitName = given.IsTrue("explicitname");
  implementation.forcePath = given.IsTrue("forcepath");
  ForEachChild(node, element, [&](NodeId child, const ElementT& described) {
    if (&described == &grammar::kPreload) implementation.preloads.push_back(Preload(child));
  });
  implementation.preloads.shrink_to_fit();
  return implementation;
}

ImplementationDeclaration Declarer::PlatformModule(NodeId node,
                                                   const ImplementationDeclaration& own) const {
  ImplementationDeclaration implementation = Implementation(node, grammar::kPlatformModule);
  implementation.machinetype = Given(node, grammar::kPlatformModule).Text("machinetype");
  if (!implementation.name) {
    implementation.name = own.name;
    implementation.explicitName |= own.explicitName;
  }
  if (!implementation.path) {
    implementation.path = own.path;
    implementation.forcePath |= own.forcePath;
  }
  return implementation;
}

void Declarer::AddModule(NodeId node) {
  const GivenAttributes given = Given(node, grammar::kModule);
  ModuleDeclaration module;
  module.node = node;
  module.isPrivate = given.IsTrue("private");
  module.id = given.Text("id");
  module.type = given.Text("type");
  if (module.type && btkIsSharedLibType(module.type->text.c_str())) module.type.reset();
  module.loadpoint = given.Text("loadpoint");
  module.implementations.push_back(Implementation(node, grammar::kModule));
  ForEachChild(node, grammar::kModule, [&](NodeId child, const ElementT& described) {
    if (&described != &grammar::kPlatformModule) return;
    module.implementations.push_back(PlatformModule(child, module.implementations.front()));
  });
  module.implementations.shrink_to_fit();
  declarations_.modules.push_back(std::move(module));
}

// ---- Classes -----------------------------------------------------------------------------------

SideDeclaration Declarer::Side(NodeId node, const ElementT& element, MfSideT side) {
  const GivenAttributes given = Given(node, element);
  SideDeclaration declaration;
  declaration.node = node;
  declaration.moduleref = given.Text("moduleref");
  declaration.multiplicity =
      given.Word("multiplicity")
          .value_or(side == kMfServiceSide ? kMfSingleInstance : kMfAlwaysNew);
  ForEachChild(node, element, [&](NodeId child, const ElementT&) {
    AddModule(child);
    declarations_.modules.back().isNested = true;
    if (declaration.nested < 0) {
      declaration.nested = static_cast<std::ptrdiff_t>(declarations_.modules.size()) - 1;
    }
  });
  return declaration;
}

void Declarer::AddServiceSide(NodeId node, ClassDeclaration& declaration) const {
  const GivenAttributes given = Given(node, grammar::kServiceSide);
  declaration.svcid = given.Id("svcid");
  if (!declaration.svcid && declaration.managedtype == kMfWorker) {
    declaration.svcid = declaration.id;
  }
  declaration.xsid = given.Id("xsid");
  declaration.xsname = given.Text("xsname");
  declaration.xsversion = given.Number("xsversion").value_or(declaration.xsversion);
  declaration.exposed = given.IsTrue("exposed");
}

void Declarer::AddClass(NodeId node) {
  const GivenAttributes given = Given(node, grammar::kClass);
  ClassDeclaration declaration;
  declaration.node = node;
  declaration.id = given.Id("id");
  declaration.affinity = given.Word("affinity").value_or(declaration.affinity);
  declaration.managedtype = given.Word("managedtype").value_or(declaration.managedtype);
  declaration.commonname = given.Text("commonname");
  ForEachChild(node, grammar::kClass, [&](NodeId child, const ElementT& described) {
    const MfSideT side = &described == &grammar::kClientSide    ? kMfClientSide
                         : &described == &grammar::kServiceSide ? kMfServiceSide
                                                                : kMfAgentSide;
    SideDeclaration& place = declaration.sides[static_cast<std::size_t>(side)];
    if (place.IsThere()) return;
    place = Side(child, described, side);
    if (side == kMfServiceSide) AddServiceSide(child, declaration);
  });
  declarations_.classes.push_back(std::move(declaration));
}

// ---- Runnables ---------------------------------------------------------------------------------

ServiceDeclaration Declarer::Service(NodeId node) const {
  const GivenAttributes given = Given(node, grammar::kService);
  ServiceDeclaration service;
  service.node = node;
  service.id = given.Id("id");
  service.commonname = given.Text("commonname");
  service.version = given.Number("version").value_or(service.version);
  service.multiplicity = given.Word("multiplicity").value_or(service.multiplicity);
  service.managedtype = given.Word("managedtype").value_or(service.managedtype);
  // Containers are made anew for whoever asks, whatever was said about it.
  if (service.managedtype == kMfContainer) service.multiplicity = kMfAlwaysNew;
  service.exposed = given.IsTrue("exposed");
  return service;
}

void Declarer::AddRunnable(NodeId node) {
  RunnableDeclaration runnable;
  runnable.node = node;
  runnable.moduleref = Given(node, grammar::kRunnable).Text("moduleref");
  ForEachChild(node, grammar::kRunnable, [&](NodeId child, const ElementT& described) {
    if (&described == &grammar::kService) {
      runnable.services.push_back(Service(child));
      return;
    }
    auto& programs = &described == &grammar::kApp ? runnable.apps : runnable.launchers;
    programs.push_back({child, Given(child, described).Text("nameid")});
  });
  declarations_.runnables.push_back(std::move(runnable));
}

}  // namespace

Declarations Declare(const Document& document) {
  Declarer declarer(document);
  const NodeId root = document.Root();
  if (root == kNoNode) return {};
  const ElementT* const described = ChildNamed(grammar::kDocument, document.Name(root));
  if (described == nullptr) return {};
  declarer.AddAll(root, *described);
  return declarer.Take();
}

}  // namespace tarnmf::check
