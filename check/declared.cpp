// SPDX-License-Identifier: Apache-2.0
#include "check/declared.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "check/given.h"
#include "check/names.h"
#include "grammar/manifest.h"
#include "support/ignore_refusal.h"

namespace tarnmf::check {
namespace {

// Elements in which no module can stand, and those in which no service can.
constexpr std::string_view kWithoutModules[] = {
    "runnables", "runnable", "service", "app",    "launcher", "args",           "arg",
    "env",       "set",      "unset",   "append", "prepend",  "platformmodule", "preload"};
constexpr std::string_view kWithoutServices[] = {
    "modules", "module", "classes",  "class",          "clientside", "agentside", "serviceside",
    "service", "app",    "launcher", "args",           "arg",        "env",       "set",
    "unset",   "append", "prepend",  "platformmodule", "preload"};
using Names = std::span<const std::string_view>;

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

// Whether an element may be lost by the finding that could have stood in one of the others.
bool MayHide(const Finding& finding, const Document& document, Names without) {
  NodeId holder = ElementAt(document, finding.place.span.begin);
  switch (finding.rule) {
    case Rule::kEntityUnreadable:
      return true;
    case Rule::kOnlyElements:
      break;
    case Rule::kElementUnknown:
    case Rule::kElementMisplaced:
      if (holder != kNoNode) holder = document[holder].parent;
      break;
    default:
      return false;
  }
  if (holder == kNoNode || document[holder].kind != NodeKind::kElement) return true;
  const std::string name = Folded(document.Name(holder));
  return std::find(without.begin(), without.end(), name) == without.end();
}

bool MayHide(const Manifest& manifest, Names without) {
  if (!manifest.isWellFormed || !manifest.source.IsDecoded() || manifest.isExternal) return true;
  return std::any_of(
      manifest.findings.begin(), manifest.findings.end(),
      [&](const Finding& finding) { return MayHide(finding, manifest.document, without); });
}

}  // namespace

ErrorPlaces::ErrorPlaces(const Manifest& manifest) : trustedEnd_(manifest.trustedEnd) {
  for (const Finding& finding : manifest.findings) {
    if (finding.severity == Severity::kError) begins_.push_back(finding.place.span.begin);
  }
  std::sort(begins_.begin(), begins_.end());
}

bool ErrorPlaces::AreIn(Span span) const {
  if (span.end > trustedEnd_) return true;
  const auto first = std::lower_bound(begins_.begin(), begins_.end(), span.begin);
  return first != begins_.end() && *first < span.end;
}

bool IsRead(const Manifest& manifest, NodeId element) {
  if (manifest.isWellFormed) return true;
  const Span tag = manifest.document[element].startTag;
  return tag.end <= manifest.trustedEnd && manifest.source.Text()[tag.end - 1] == '>';
}

// A module or service with an id that cannot be read may be any.
bool MayHideModules(const Manifest& manifest) {
  if (MayHide(manifest, kWithoutModules)) return true;
  const ErrorPlaces errors(manifest);
  const auto isUnclear = [&](const ModuleDeclaration& module) {
    return !module.id && errors.AreIn(manifest.document[module.node].span);
  };
  const std::vector<ModuleDeclaration>& modules = manifest.declarations.modules;
  return std::any_of(modules.begin(), modules.end(), isUnclear);
}

// One whose name or version is not clear may be the host that a class asks for.
bool MayHideServices(const Manifest& manifest) {
  if (MayHide(manifest, kWithoutServices)) return true;
  const auto isUnclear = [&](const ServiceDeclaration& service) {
    const GivenAttributes given(manifest.document, service.node, grammar::kService);
    return !service.id || !given.IsClear("commonname") || !given.IsClear("version");
  };
  const std::vector<RunnableDeclaration>& runnables = manifest.declarations.runnables;
  return std::any_of(runnables.begin(), runnables.end(), [&](const RunnableDeclaration& runnable) {
    return std::any_of(runnable.services.begin(), runnable.services.end(), isUnclear);
  });
}

Declared DeclaredBy(const std::vector<std::unique_ptr<LoadPoint>>& loadpoints) {
  Declared declared;
  for (const auto& loadpoint : loadpoints) {
    declared.knowsModules &= loadpoint->knowsModules;
    declared.knowsServices &= loadpoint->knowsServices;
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
