// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/why_preload.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>

#include "check/module_files.h"
#include "check/preloads.h"
#include "check/wording.h"
#include "tools/tarnmf/name_hint.h"
#include "tools/tarnmf/option_switch.h"
#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/show_text.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using namespace tarnmf::check;

ProcessDescription DescriptionOf(const WhyPreloadOptions& options) {
  ProcessDescription process;
  if (!options.service.empty()) process.service = ParseId(options.service);
  process.program = options.program;
  for (const std::string& setting : options.options) {
    const OptionSwitch option = ParseOptionSwitch(setting);
    if (option.value != 0) process.options.push_back(option.id);
  }
  return process;
}

struct Condition {
  Place place;
  std::vector<PreloadPart> parts;

  bool Holds() const {
    return std::all_of(parts.begin(), parts.end(),
                       [](const PreloadPart& part) { return part.holds; });
  }
};

// A declaration of the module with all that its preload depends on.
struct Explanation {
  Place place;
  std::vector<PreloadPart> needs;     // all of them
  std::vector<Condition> conditions;  // one of them, of the implementation in use

  bool IsPreloaded() const {
    const auto holds = [](const PreloadPart& part) { return part.holds; };
    return std::all_of(needs.begin(), needs.end(), holds) &&
           std::any_of(conditions.begin(), conditions.end(),
                       [](const Condition& condition) { return condition.Holds(); });
  }
};

std::string WhereItIs(const FileSearch& search) {
  if (!search.file.empty()) return search.file;
  std::string tried = fmt::format("looked for {}", fmt::join(search.tried, ", "));
  if (search.refusal == kBtkHostAdmitted) return tried;
  return search.tried.empty() ? search.reason : search.reason + "; " + tried;
}

Explanation Explain(const LoadPoint& loadpoint, const Manifest& manifest,
                    const ModuleDeclaration& module, const ProcessDescription& process) {
  const auto at = [&](NodeId node) {
    return Place{&manifest.source, manifest.document[node].name};
  };
  const ModuleFile file = FindModuleFile(loadpoint, module);
  Explanation explanation{at(module.node), {}, {}};
  explanation.needs = {
      {"it belongs to the process's own load point", loadpoint.role == LoadPoint::Role::kProcess},
      {"it is a shared library", !module.type.has_value()},
      {fmt::format("its file is there ({})", WhereItIs(file.search)), !file.search.file.empty()}};
  for (const PreloadDeclaration& preload : file.implementation->preloads)
    explanation.conditions.push_back({at(preload.node), PartsOf(preload, process)});
  return explanation;
}

std::vector<Explanation> ExplainAll(const CheckedProcess& checked, const std::string& id,
                                    const ProcessDescription& process) {
  std::vector<Explanation> explanations;
  for (std::size_t i = 0; i < checked.LoadPoints().size(); ++i) {
    const LoadPoint& loadpoint = *checked.LoadPoints()[i];
    for (const auto& manifest : loadpoint.manifests) {
      for (const ModuleDeclaration& module : manifest->declarations.modules) {
        if (!module.id || module.id->text != id) continue;
        explanations.push_back(Explain(loadpoint, *manifest, module, process));
        if (checked.IsRefused(i))
          explanations.back().needs.push_back({"the library accepts its load point", false});
      }
    }
  }
  return explanations;
}

void PrintParts(const std::vector<PreloadPart>& parts, int indent) {
  for (const PreloadPart& part : parts)
    ShowText("{:{}}{}: {}\n", "", indent, part.holds ? "true" : "false", part.text);
}

void PrintText(const Explanation& explanation) {
  ShowText("{}: {}\n", PlaceText(explanation.place),
           explanation.IsPreloaded() ? "it is preloaded" : "it is not preloaded");
  PrintParts(explanation.needs, 2);
  if (explanation.conditions.empty())
    ShowText("  false: the implementation in use has a preload condition\n");
  for (const Condition& condition : explanation.conditions) {
    ShowText("  {}: condition at {}\n", condition.Holds() ? "true" : "false",
             PlaceText(condition.place));
    PrintParts(condition.parts, 4);
  }
}

Json PlaceJson(const Place& place) {
  const Position at = place.source->At(place.span.begin);
  return {{"file", place.source->Path()}, {"line", at.line}, {"column", at.column}};
}

Json PartsJson(const std::vector<PreloadPart>& parts) {
  Json array = Json::array();
  for (const PreloadPart& part : parts)
    array.push_back({{"text", part.text}, {"holds", part.holds}});
  return array;
}

Json ToJson(const Explanation& explanation) {
  Json json = PlaceJson(explanation.place);
  json["preloaded"] = explanation.IsPreloaded();
  json["needs"] = PartsJson(explanation.needs);
  json["conditions"] = Json::array();
  for (const Condition& condition : explanation.conditions) {
    Json& entry = json["conditions"].emplace_back(PlaceJson(condition.place));
    entry["holds"] = condition.Holds();
    entry["parts"] = PartsJson(condition.parts);
  }
  return json;
}

void Print(const std::string& module, const std::vector<Explanation>& explanations, bool json) {
  if (!json) {
    for (const Explanation& explanation : explanations)
      PrintText(explanation);
    return;
  }
  Json array = Json::array();
  for (const Explanation& explanation : explanations)
    array.push_back(ToJson(explanation));
  fmt::print("{}", FormText(json_format::kWhyPreload,
                            {{"module", module}, {"declarations", std::move(array)}}));
}

void PrintUnknown(const CheckedProcess& checked, const std::string& id) {
  std::set<std::string> ids;
  for (const auto& loadpoint : checked.LoadPoints()) {
    for (const auto& manifest : loadpoint->manifests) {
      for (const ModuleDeclaration& module : manifest->declarations.modules) {
        if (module.id) ids.insert(module.id->text);
      }
    }
  }
  Tell("no module has the id {}{}", Quoted(id),
       NameHint(id, {ids.begin(), ids.end()}, "declared are"));
}

}  // namespace

int RunWhyPreload(const WhyPreloadOptions& options) {
  const ProcessDescription process = DescriptionOf(options);
  const CheckedProcess checked(options.process);
  const std::vector<Explanation> explanations = ExplainAll(checked, options.module, process);
  Print(options.module, explanations, options.json);
  checked.PrintRefused();
  if (explanations.empty()) PrintUnknown(checked, options.module);
  const bool isPreloaded =
      std::any_of(explanations.begin(), explanations.end(),
                  [](const Explanation& explanation) { return explanation.IsPreloaded(); });
  return isPreloaded ? 0 : 1;
}

}  // namespace tool
