// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/known_values.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

#include "grammar/manifest.h"
#include "platform/dlm.h"
#include "platform/runtime.h"
#include "tools/tarnmf/lsp/attribute_values.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;
using namespace tarnmf::grammar;

class Collection {
 public:
  explicit Collection(const CompletionPlace& place)
      : place_(place), element_(*place.cursor.element) {}

  std::vector<KnownValue> Run() {
    const AttributeT& attribute = *place_.cursor.described;
    const std::string_view name = attribute.name;
    if (IsOwnId(attribute, element_)) Add(FreshId(), "a fresh id");
    if (name == kModuleRef.name) {
      AddModules();
    } else if (name == "svcid" || name == "xsid") {
      AddServices();
    } else if (name == "xsname") {
      AddDeclared(NameKind::kServiceName);
    } else if (name == "type") {
      AddTypes();
    } else if (name == "machinetype") {
      AddMachineTypes();
    }
    return std::move(values_);
  }

 private:
  void Add(std::string text, std::string detail = {}) {
    if (!text.empty() && texts_.insert(text).second)
      values_.push_back({std::move(text), std::move(detail)});
  }

  void AddDeclared(NameKind kind) {
    for (const Occurrence& each : place_.names) {
      if (each.kind == kind && each.isDeclaration) Add(each.name);
    }
  }

  // A side's module is one of its own load point, a runnable's may be any.
  void AddModules() {
    const auto add = [&](bool ofOwnLoadPoint) {
      for (const Occurrence& each : place_.names) {
        const bool isWanted = (each.loadpoint == place_.loadpoint) == ofOwnLoadPoint;
        if (isWanted && each.kind == NameKind::kModule && each.isDeclaration) Add(each.name);
      }
    };
    add(true);
    if (&element_ == &kRunnable) add(false);
  }

  void AddServices() {
    std::map<std::pair<const Manifest*, NodeId>, std::string> commonNames;
    for (const Occurrence& each : place_.names) {
      if (each.kind == NameKind::kServiceName && each.isDeclaration)
        commonNames[{each.manifest.get(), each.node}] = each.name;
    }
    for (const Occurrence& each : place_.names) {
      if (each.kind != NameKind::kService || !each.isDeclaration) continue;
      const auto commonName = commonNames.find({each.manifest.get(), each.node});
      Add(each.name, commonName != commonNames.end() ? commonName->second : std::string());
    }
  }

  void AddTypes() {
    Add(kBtkSharedLibType);
    if (place_.cursor.parentElement->content != Content::kSide) Add(kBtkExecutableType);
  }

  // The platform's, and those that are in use.
  void AddMachineTypes() {
    Add(btkGetVexMachine());
    Add(btkGetVexMachine3264(""));
    std::set<const Manifest*> manifests = {&place_.manifest};
    std::set<std::string> inUse;
    AddMachineTypesOf(place_.manifest, inUse);
    for (const Occurrence& each : place_.names) {
      if (manifests.insert(each.manifest.get()).second) AddMachineTypesOf(*each.manifest, inUse);
    }
    for (const std::string& each : inUse)
      Add(each);
  }

  // What is just being written is not in use.
  void AddMachineTypesOf(const Manifest& manifest, std::set<std::string>& inUse) const {
    const bool isOwn = manifest.source.Path() == place_.manifest.source.Path();
    for (const ModuleDeclaration& module : manifest.declarations.modules) {
      for (const ImplementationDeclaration& each : module.implementations) {
        if (!each.machinetype) continue;
        if (isOwn && each.machinetype->span == place_.cursor.attribute->value) continue;
        inUse.insert(each.machinetype->text);
      }
    }
  }

  const CompletionPlace& place_;
  const ElementT& element_;
  std::vector<KnownValue> values_;
  std::set<std::string> texts_;
};

}  // namespace

std::vector<KnownValue> KnownValues(const CompletionPlace& place) {
  return Collection(place).Run();
}

}  // namespace tool::lsp
