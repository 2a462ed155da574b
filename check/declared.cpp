#include "check/declared.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "platform/text.h"
#include "support/ignore_refusal.h"

namespace tarnmf::check {
namespace {

// Elements in which neither modules nor services can stand.
bool HoldsNoDeclaration(std::string_view element) {
  static constexpr std::string_view kNames[] = {
      "args",    "arg",     "env", "set",      "unset",          "append",
      "prepend", "service", "app", "launcher", "platformmodule", "preload"};
  std::string name(element);
  std::transform(name.begin(), name.end(), name.begin(), btkAsciiToLower<char>);
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

// The innermost element that the place is in or begins.
NodeId ElementAt(const Document& document, std::size_t offset) {
  const auto after =
      std::upper_bound(document.nodes.begin(), document.nodes.end(), offset,
                       [](std::size_t place, const Node& node) { return place < node.span.begin; });
  NodeId node = after != document.nodes.begin()
                    ? static_cast<NodeId>(after - document.nodes.begin()) - 1
                    : kNoNode;
  while (node != kNoNode && document[node].kind != NodeKind::kElement)
    node = document[node].parent;
  return node;
}

bool MayHide(const Finding& finding, const Document& document) {
  switch (finding.rule) {
    case Rule::kUnreadable:
    case Rule::kNotWellFormed:
    case Rule::kEntityUnreadable:
    case Rule::kOnlyElements:
      return true;
    case Rule::kElementUnknown:
    case Rule::kElementMisplaced: {
      const NodeId node = ElementAt(document, finding.place.span.begin);
      if (node == kNoNode) return true;
      const NodeId parent = document[node].parent;
      return parent == kNoNode || document[parent].kind != NodeKind::kElement ||
             !HoldsNoDeclaration(document.Name(parent));
    }
    default:
      return false;
  }
}

}  // namespace

bool MayHideDeclarations(const Manifest& manifest) {
  if (!manifest.isWellFormed || !manifest.source.IsDecoded() || manifest.isExternal) return true;
  const auto hides = [&](const Finding& finding) { return MayHide(finding, manifest.document); };
  if (std::any_of(manifest.findings.begin(), manifest.findings.end(), hides)) return true;
  const Declarations& declared = manifest.declarations;
  const auto hasNoId = [](const ModuleDeclaration& module) {
    return !module.id && !module.isNested;
  };
  const auto hidesService = [](const RunnableDeclaration& runnable) {
    return std::any_of(runnable.services.begin(), runnable.services.end(),
                       [](const ServiceDeclaration& service) { return !service.id; });
  };
  return std::any_of(declared.modules.begin(), declared.modules.end(), hasNoId) ||
         std::any_of(declared.runnables.begin(), declared.runnables.end(), hidesService);
}

Declared DeclaredBy(const std::vector<std::unique_ptr<LoadPoint>>& loadpoints) {
  Declared declared;
  for (const auto& loadpoint : loadpoints) {
    declared.isComplete &= loadpoint->isComplete;
    for (const auto& manifest : loadpoint->manifests) {
      for (const ModuleDeclaration& module : manifest->declarations.modules) {
        if (module.id) declared.modules.insert(module.id->text);
      }
      for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
        for (const ServiceDeclaration& service : runnable.services) {
          if (service.id) declared.services.insert(IdText(service.id->id));
        }
      }
    }
  }
  return declared;
}

std::string IdText(const UniIdT& id) {
  char text[kBtkUniIdDashedLength + 1] = {};
  // The text fits.
  IgnoreRefusal(btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdDashed, 0));
  return text;
}

}  // namespace tarnmf::check
