// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/scan_json.h"

#include <algorithm>

#include "tarnmf/error_text.h"

#include "tools/tarnmf/report_json.h"
#include "tools/tarnmf/scan_summary.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

template <class Element, class Show>
Json Array(const Element& elements, Show show) {
  Json array = Json::array();
  for (const auto& element : elements)
    array.push_back(show(element));
  return array;
}

Json WideArray(const btkHostListT<const btkWChar*>& texts) {
  return Array(texts, [](const btkWChar* text) { return Json(Narrow(text)); });
}

Json LayoutJson(const btkHostLayoutT& layout) {
  return {{"machine", layout.machine},
          {"text1", ToJson(layout.text1)},
          {"text2", ToJson(layout.text2)},
          {"list1", WideArray(layout.lists[0])},
          {"list2", WideArray(layout.lists[1])},
          {"list3", WideArray(layout.lists[2])},
          {"flag", layout.flag}};
}

Json InterfaceJson(const btkHostIntfRefT& ref) {
  return {{"id", IdText(ref.intfId)},
          {"module", ref.module},
          {"commonname", ToJson(ref.commonname)},
          {"displayname", ToJson(ref.displayname)},
          {"version", ref.version},
          {"shared", ref.shared},
          {"multiplicityOrigin", ref.multiplicityOrigin}};
}

Json RunnableJson(const btkHostRunnableT& runnable) {
  const auto env = [](const btkHostEnvCmdT& command) {
    return Json{{"action", command.action},
                {"flags", command.flags},
                {"name", Narrow(command.name)},
                {"value", ToJson(command.value)}};
  };
  return {{"name", runnable.name},
          {"moduleref", runnable.moduleref},
          {"launcher", ToJson(runnable.launcher)},
          {"args", WideArray(runnable.args)},
          {"env", Array(runnable.env, env)},
          {"initstate", runnable.initstate}};
}

Json ServiceJson(const btkHostServiceT& service) {
  return {{"id", IdText(service.id)},
          {"model", IdText(service.model)},
          {"flags", service.flags},
          {"commonname", ToJson(service.commonname)},
          {"version", service.version},
          {"mode", service.mode},
          {"hasInstance", service.hasInstance}};
}

Json RegisteredJson(const Registered& registered) {
  const btkHostDlmManager& dlm = btkHostEmbeddedDlmManager();
  const auto services = btkHostEmbeddedServiceManager().Services();
  const auto installation = [](const btkHostInstallationT& made) {
    return Json{{"base", Narrow(made.base)}, {"scope", IdText(made.scope)}};
  };
  return {
      {"installations", Array(Part(dlm.Installations(), registered.installations), installation)},
      {"layouts", Array(Part(dlm.Layouts(), registered.layouts), LayoutJson)},
      {"interfaces", Array(Part(dlm.InterfaceRefs(), registered.interfaces), InterfaceJson)},
      {"runnables", Array(Part(dlm.Runnables(), registered.runnables), RunnableJson)},
      {"services", Array(Part(services, registered.services), ServiceJson)}};
}

Json ModulesJson(const StepView& view) {
  return Array(view.Step().data->modules, [&](const MfModuleT* module) {
    const std::string file = ResolvedFile(*module);
    const MfModuleImplT* const impl = module->selectedImpl;
    return Json{{"id", ToJson(module->id)},
                {"machinetype", impl != nullptr ? ToJson(impl->machinetype) : Json()},
                {"fallback", IsFallback(*module)},
                {"file", file.empty() ? Json() : Json(file)},
                {"tried", view.TriedFiles(*module)},
                {"refusals", view.Refusals(*module)}};
  });
}

Json FiledJson(const StepView& view) {
  Json classes = Json::array();
  const MfListT<MfIntfClassT>& records = view.Step().data->classes;
  for (std::int32_t i = 0; i < records.count; ++i) {
    const MfIntfClassT& record = *records[i];
    if (record.commonname == nullptr) continue;
    const std::string& why = view.Answers()[static_cast<std::size_t>(i)].why;
    classes.push_back({{"commonname", record.commonname},
                       {"id", IdText(record.ids[kMfClientSide])},
                       {"svcVersion", record.svcVersion},
                       {"answers", why.empty()},
                       {"why", why.empty() ? Json() : Json(why)}});
  }
  const auto entry = [](const MfSvcResolveT* filed) { return ToJson(*filed); };
  return {{"classes", std::move(classes)}, {"services", Array(view.Services(), entry)}};
}

Json PreloadJson(const btkHostPreloadT& preload) {
  return {{"path", preload.path},
          {"loaded", preload.isLoaded},
          {"failure", *preload.failure == '\0' ? Json() : Json(preload.failure)}};
}

Json StepJson(const StepView& view) {
  const ScanStep& step = view.Step();
  Json json = {{"kind", step.isProcess ? "process" : "installation"},
               {"directory", step.directory},
               {"loadpoint", step.path},
               {"id", IdText(step.id)},
               {"scope", IdText(step.scope)}};
  json.update(ToJson(step.result));
  json["problem"] = step.problem.empty() ? Json() : Json(step.problem);
  json["errors"] = JsonReport(step.errors);
  json["manifests"] = step.manifests;
  json["registered"] = RegisteredJson(step.registered);
  json["preloads"] =
      Array(Part(btkHostEmbeddedDlmManager().Preloads(), step.registered.preloads), PreloadJson);
  json["data"] = step.data != nullptr ? ToJson(*step.data) : Json();
  if (step.data == nullptr) return json;
  json["modules"] = ModulesJson(view);
  json["filed"] = FiledJson(view);
  return json;
}

Json SummaryJson(const ScanSummary& sum, const tarnmf::check::Verdict& findings) {
  using tarnmf::check::Severity;
  return {{"loadpoints", sum.loadpoints},
          {"failed", sum.failed},
          {"manifests", sum.manifests},
          {"modules", sum.modules},
          {"unresolved", sum.unresolved},
          {"classes", sum.classes},
          {"hidden", sum.hidden},
          {"unhosted", sum.unhosted},
          {"runnables", sum.runnables},
          {"preloads", sum.preloads},
          {"errors", findings.Count(Severity::kError)},
          {"warnings", findings.Count(Severity::kWarning)},
          {"infos", findings.Count(Severity::kInfo)}};
}

}  // namespace

Json ToJson(const LoadResult& result) {
  if (result.exception) return {{"code", Json()}, {"exception", *result.exception}};
  return {{"code", static_cast<int>(result.code)},
          {"meaning", tarnmf::DescribeError(result.code).sentence}};
}

Json ToJson(const ScanView& view) {
  const auto& steps = view.Session().Steps();
  const auto failed = std::find_if(steps.begin(), steps.end(),
                                   [](const ScanStep& step) { return step.result.Failed(); });
  Json json = {{"code", failed != steps.end() ? ToJson(failed->result)["code"] : Json(0)}};
  json["steps"] = Array(view.Steps(), StepJson);
  json["skipped"] = view.Session().Skipped();
  json["summary"] = SummaryJson(Summarize(view), view.Session().Findings().All());
  view.Session().Names().Show(json);
  return json;
}

}  // namespace tool
