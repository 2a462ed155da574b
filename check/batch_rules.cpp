// SPDX-License-Identifier: Apache-2.0
#include "check/batch_rules.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <string_view>
#include <unordered_map>

#include "check/suggestions.h"
#include "check/wording.h"
#include "platform/runtime.h"
#include "publish/role_rules.h"

namespace tarnmf::check {
namespace {

// Names that are compared in all to find what was meant. It bounds the time that a load point full
// of unknown names takes.
constexpr std::size_t kMostCompared = 200'000;

// What the classes of a load point make of one module.
struct ModuleUse {
  Place place;  // of its id
  RoleSet roles = 0;
  std::array<const ClassRecord*, std::size(kRoleRules)> givers{};  // by role
};

std::string ShownPlace(const Place& place) {
  return fmt::format("{}:{}", place.source->Path(), place.source->At(place.span.begin).line);
}

const char* SideInWords(MfSideT side) {
  switch (side) {
    case kMfClientSide:
      return "client";
    case kMfServiceSide:
      return "service";
    default:
      return "agent";
  }
}

const char* AffinityInWords(std::int32_t affinity) {
  switch (affinity) {
    case kMfAppClass:
      return "app";
    case kMfAgentClass:
      return "agent";
    case kMfServiceClass:
      return "service";
    default:
      return "generic";
  }
}

std::string Written(const Manifest& manifest, Span span) {
  return Quoted(manifest.source.Text(span));
}

void RelateFirst(Finding& finding, const Place& first) {
  finding.related.push_back({first, "first declared here"});
}

class BatchCheck {
 public:
  BatchCheck(const LoadPoint& loadpoint, const Declared& declared, std::vector<Finding>& findings)
      : loadpoint_(loadpoint), declared_(declared), findings_(findings) {}

  void CheckModules();
  void CheckClasses(const std::vector<ClassRecord>& classes);
  void CheckRunnables();

 private:
  void CheckMachineTypes(const Manifest& manifest, const ModuleDeclaration& module);
  void CheckSides(const ClassRecord& record, SideSet sides);
  void Claim(const ClassRecord& record, const RoleRule& rule);
  void TellRole(const ClassRecord& record, const RoleRule& rule, const std::string& id,
                const ModuleUse& use, Span span);
  void TellUnknown(Finding finding, const Manifest& manifest, const TextValue& reference,
                   bool mayBeSafe);
  Finding& Tell(Rule rule, const Manifest& manifest, Span span, std::string message) {
    findings_.push_back(Found(rule,
                              Describe(rule).severity == Severity::kError ? kBtkUnexpected : kBtkOk,
                              {&manifest.source, span}, std::move(message)));
    return findings_.back();
  }

  const LoadPoint& loadpoint_;
  const Declared& declared_;
  std::vector<Finding>& findings_;
  std::unordered_map<std::string, ModuleUse> modules_;
  std::vector<std::string_view> ids_;  // in the order of their declaration
  std::size_t compared_ = 0;
};

// ---- Modules -----------------------------------------------------------------------------------

void BatchCheck::CheckModules() {
  for (const auto& manifest : loadpoint_.manifests) {
    for (const ModuleDeclaration& module : manifest->declarations.modules) {
      if (!IsRead(*manifest, module.node)) continue;
      CheckMachineTypes(*manifest, module);
      if (!module.id) continue;
      const Place place{&manifest->source, module.id->span};
      const auto [known, isNew] = modules_.try_emplace(module.id->text, ModuleUse{place, 0, {}});
      if (isNew) {
        ids_.push_back(known->first);
        continue;
      }
      RelateFirst(Tell(Rule::kDuplicateModule, *manifest, module.id->span,
                       fmt::format("module id {} is taken", Quoted(module.id->text))),
                  known->second.place);
    }
  }
}

void BatchCheck::CheckMachineTypes(const Manifest& manifest, const ModuleDeclaration& module) {
  std::map<std::string_view, Span> types;
  for (std::size_t i = 1; i < module.implementations.size(); ++i) {
    const std::optional<TextValue>& type = module.implementations[i].machinetype;
    if (!type) continue;
    const auto [known, isNew] = types.try_emplace(type->text, type->span);
    if (isNew) continue;
    RelateFirst(Tell(Rule::kDuplicateMachinetype, manifest, type->span,
                     fmt::format("machine type {} is taken", Quoted(type->text))),
                {&manifest.source, known->second});
  }
}

// ---- Classes -----------------------------------------------------------------------------------

void BatchCheck::CheckClasses(const std::vector<ClassRecord>& classes) {
  for (const ClassRecord& record : classes) {
    if (record.first != nullptr && !record.completesFirst) {
      RelateFirst(Tell(Rule::kDuplicateClass, *record.manifest, record.declaration->id->span,
                       fmt::format("class id {} is taken, and the two classes do not complete "
                                   "each other",
                                   Written(*record.manifest, record.declaration->id->span))),
                  record.first->At(record.first->declaration->id->span));
    }
    // A class that is not read as it was meant says nothing about its sides.
    if (record.hasErrors) continue;
    SideSet sides = 0;
    for (MfSideT side : {kMfClientSide, kMfServiceSide, kMfAgentSide}) {
      if (record.written[static_cast<std::size_t>(side)] != nullptr) sides |= SideBit(side);
    }
    CheckSides(record, sides);
    const RoleSet claimed = RuleOf(record.declaration->affinity).claimed;
    for (const RoleRule& rule : kRoleRules) {
      const bool asks = (claimed & RoleBit(static_cast<ModuleRole>(&rule - kRoleRules))) != 0;
      if (asks && (sides & SideBit(rule.side)) != 0) Claim(record, rule);
    }
  }
}

void BatchCheck::CheckSides(const ClassRecord& record, SideSet sides) {
  const SideSet needed = RuleOf(record.declaration->affinity).neededSides;
  if ((needed & sides) != 0) return;
  std::string words;
  bool hasBare = false;  // there is such a side, which has no module
  for (MfSideT side : {kMfClientSide, kMfServiceSide, kMfAgentSide}) {
    if ((needed & SideBit(side)) == 0) continue;
    words += words.empty() ? (side == kMfAgentSide ? "an " : "a ") : " or ";
    words += SideInWords(side);
    hasBare |= record.declaration->sides[static_cast<std::size_t>(side)].IsThere();
  }
  Tell(Rule::kSideMissing, *record.manifest, record.ElementName(),
       fmt::format("{} class {} needs {} side{}", AffinityInWords(record.declaration->affinity),
                   Quoted(NameOf(*record.declaration)), words, hasBare ? " with a module" : ""));
}

void BatchCheck::Claim(const ClassRecord& record, const RoleRule& rule) {
  const SideDeclaration& side = *record.written[static_cast<std::size_t>(rule.side)];
  const Manifest& manifest = *record.manifest;
  // Nobody else can name a module whose id is made up.
  const std::optional<TextValue>& id =
      side.moduleref ? side.moduleref
                     : manifest.declarations.modules[static_cast<std::size_t>(side.nested)].id;
  if (!id) return;
  const auto known = modules_.find(id->text);
  if (known == modules_.end()) {
    if (!loadpoint_.knowsModules) return;
    TellUnknown(Found(Rule::kModuleUnknown, kBtkUnexpected, {&manifest.source, id->span},
                      fmt::format("no manifest here declares module {}", Quoted(id->text))),
                manifest, *id, true);
    return;
  }
  ModuleUse& use = known->second;
  if ((use.roles & rule.excluded) != 0) return TellRole(record, rule, id->text, use, id->span);
  for (RoleSet left = rule.added & ~use.roles; left != 0; left &= left - 1)
    use.givers[static_cast<std::size_t>(std::countr_zero(left))] = &record;
  use.roles |= rule.added;
}

void BatchCheck::TellRole(const ClassRecord& record, const RoleRule& rule, const std::string& id,
                          const ModuleUse& use, Span span) {
  const auto role = static_cast<std::size_t>(std::countr_zero(use.roles & rule.excluded));
  const ClassRecord& giver = *use.givers[role];
  const MfSideT side = kRoleRules[role].side;
  const SideDeclaration& given = *giver.written[static_cast<std::size_t>(side)];
  const Place other =
      giver.At(given.moduleref ? given.moduleref->span : giver.manifest->document[given.node].name);
  Finding& finding =
      Tell(Rule::kModuleRole, *record.manifest, span,
           fmt::format("module {} is the {} side of {} class {} at {} and cannot be the {} side "
                       "of {} class {}",
                       Quoted(id), SideInWords(side), AffinityInWords(giver.declaration->affinity),
                       Quoted(NameOf(*giver.declaration)), ShownPlace(other),
                       SideInWords(rule.side), AffinityInWords(record.declaration->affinity),
                       Quoted(NameOf(*record.declaration))));
  finding.related.push_back({other, "the other role is given here"});
}

// ---- Runnables ---------------------------------------------------------------------------------

void BatchCheck::CheckRunnables() {
  std::map<std::string, Place> services;  // by id
  for (const auto& manifest : loadpoint_.manifests) {
    for (const RunnableDeclaration& runnable : manifest->declarations.runnables) {
      if (!IsRead(*manifest, runnable.node)) continue;
      const std::optional<TextValue>& reference = runnable.moduleref;
      if (reference && declared_.knowsModules && !declared_.modules.contains(reference->text)) {
        TellUnknown(
            Found(Rule::kRunnableModuleUnknown, kBtkOk, {&manifest->source, reference->span},
                  fmt::format("the runnable can never start: no manifest here declares "
                              "module {}",
                              Quoted(reference->text))),
            *manifest, *reference, false);
      }
      for (const ServiceDeclaration& service : runnable.services) {
        if (!service.id) continue;
        const Place place{&manifest->source, service.id->span};
        const auto [known, isNew] = services.try_emplace(IdText(service.id->id), place);
        if (isNew) continue;
        RelateFirst(Tell(Rule::kDuplicateService, *manifest, service.id->span,
                         fmt::format("service id {} is declared already in this load point",
                                     Written(*manifest, service.id->span))),
                    known->second);
      }
    }
  }
}

// ---- Unknown modules ---------------------------------------------------------------------------

// A text that is not written as it is read is not replaced: what stands there may be more than it.
bool CanReplace(const Manifest& manifest, const TextValue& value, std::string_view text) {
  return manifest.source.Text(value.span) == value.text &&
         text.find_first_of("&<>\"'") == std::string_view::npos;
}

void BatchCheck::TellUnknown(Finding finding, const Manifest& manifest, const TextValue& reference,
                             bool mayBeSafe) {
  CloseNames close(reference.text);
  if (compared_ < kMostCompared) {
    for (const std::string_view id : ids_)
      close.Offer(id);
    compared_ += ids_.size();
  }
  const std::vector<std::string_view> meant = close.FewBest();
  finding.message += DidYouMean(meant, Quoted);
  for (const std::string_view id : meant) {
    if (!CanReplace(manifest, reference, id)) continue;
    finding.suggestions.push_back(Replace(reference.span, reference.text, std::string(id)));
    finding.suggestions.back().safe =
        mayBeSafe && meant.size() == 1 &&
        btk_strcasecmp(finding.suggestions.back().edits[0].text.c_str(), reference.text.c_str()) ==
            0;
  }
  findings_.push_back(std::move(finding));
}

}  // namespace

void CheckBatch(const LoadPoint& loadpoint, const std::vector<ClassRecord>& classes,
                const Declared& declared, std::vector<Finding>& findings) {
  BatchCheck check(loadpoint, declared, findings);
  check.CheckModules();
  check.CheckClasses(classes);
  check.CheckRunnables();
}

}  // namespace tarnmf::check
