#include "tools/tarnmf/scan_json.h"

#include <algorithm>

#include "tarnmf/error_text.h"

#include "tools/tarnmf/scan_view.h"
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

template <class Text>
Json OrNull(const std::optional<Text>& text) {
  return text ? Json(std::string(*text)) : Json();
}
template <>
Json OrNull(const std::optional<btkHostWideT>& text) {
  return text ? Json(Narrow(*text)) : Json();
}

Json WideArray(const std::vector<btkHostWideT>& texts) {
  return Array(texts, [](const btkHostWideT& text) { return Json(Narrow(text)); });
}

Json LayoutJson(const btkHostLayoutT& layout) {
  return {{"machine", layout.machine},
          {"text1", OrNull(layout.text1)},
          {"text2", OrNull(layout.text2)},
          {"list1", WideArray(layout.lists[0])},
          {"list2", WideArray(layout.lists[1])},
          {"list3", WideArray(layout.lists[2])},
          {"flag", layout.flag}};
}

Json InterfaceJson(const btkHostIntfRefT& ref) {
  return {{"id", IdText(ref.intfId)},
          {"module", ref.module},
          {"commonname", OrNull(ref.commonname)},
          {"displayname", OrNull(ref.displayname)},
          {"version", ref.version},
          {"shared", ref.shared},
          {"multiplicityOrigin", ref.multiplicityOrigin}};
}

Json RunnableJson(const btkHostRunnableT& runnable) {
  const auto env = [](const btkHostEnvCmdT& command) {
    return Json{{"action", command.action},
                {"flags", command.flags},
                {"name", Narrow(command.name)},
                {"value", OrNull(command.value)}};
  };
  return {{"name", runnable.name},
          {"moduleref", runnable.moduleref},
          {"launcher", OrNull(runnable.launcher)},
          {"args", WideArray(runnable.args)},
          {"env", Array(runnable.env, env)},
          {"initstate", runnable.initstate}};
}

Json ServiceJson(const btkHostServiceT& service) {
  return {{"id", IdText(service.id)},
          {"model", IdText(service.model)},
          {"flags", service.flags},
          {"commonname", OrNull(service.commonname)},
          {"version", service.version},
          {"mode", service.mode},
          {"hasInstance", service.hasInstance}};
}

Json RegisteredJson(const Registered& registered) {
  const btkHostDlmManager& dlm = btkHostEmbeddedDlmManager();
  const auto& services = btkHostEmbeddedServiceManager().Services();
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

Json ModulesJson(const ScanStep& step) {
  return Array(step.data->modules, [&](const MfModuleT* module) {
    const std::string file = ResolvedFile(*module);
    const MfModuleImplT* const impl = module->selectedImpl;
    return Json{{"id", ToJson(module->id)},
                {"machinetype", impl != nullptr ? ToJson(impl->machinetype) : Json()},
                {"fallback", IsFallback(*module)},
                {"file", file.empty() ? Json() : Json(file)},
                {"tried", TriedFiles(step, *module)}};
  });
}

Json FiledJson(liMfRepository& repository, const ScanStep& step) {
  Json classes = Json::array();
  for (const MfIntfClassT* record : step.data->classes) {
    if (record->commonname == nullptr) continue;
    const std::string why = WhyUnanswered(repository, step, *record);
    classes.push_back({{"commonname", record->commonname},
                       {"id", IdText(record->ids[kMfClientSide])},
                       {"svcVersion", record->svcVersion},
                       {"answers", why.empty()},
                       {"why", why.empty() ? Json() : Json(why)}});
  }
  const auto entry = [](const MfSvcResolveT& filed) { return ToJson(filed); };
  return {{"classes", std::move(classes)},
          {"services", Array(ServiceEntries(repository, step.id), entry)}};
}

Json PreloadJson(const btkHostPreloadT& preload) {
  return {{"path", preload.path},
          {"failure", preload.failure.empty() ? Json() : Json(preload.failure)}};
}

Json StepJson(const ScanSession& session, const ScanStep& step) {
  Json json = {{"kind", step.isProcess ? "process" : "installation"},
               {"directory", step.directory},
               {"loadpoint", step.path},
               {"id", IdText(step.id)},
               {"scope", IdText(step.scope)}};
  json.update(ToJson(step.result));
  json["reason"] = step.reason.empty() ? Json() : Json(step.reason);
  json["warning"] = step.warning.empty() ? Json() : Json(step.warning);
  json["manifests"] = step.manifests;
  json["registered"] = RegisteredJson(step.registered);
  json["preloads"] =
      Array(Part(btkHostEmbeddedDlmManager().Preloads(), step.registered.preloads), PreloadJson);
  json["data"] = step.data != nullptr ? ToJson(*step.data) : Json();
  if (step.data == nullptr) return json;
  json["modules"] = ModulesJson(step);
  json["filed"] = FiledJson(*session.Repository(), step);
  return json;
}

}  // namespace

Json ToJson(const LoadResult& result) {
  if (result.exception) return {{"code", Json()}, {"exception", *result.exception}};
  return {{"code", static_cast<int>(result.code)},
          {"meaning", tarnmf::DescribeError(result.code).sentence}};
}

Json ToJson(const ScanSession& session) {
  const auto& steps = session.Steps();
  const auto failed = std::find_if(steps.begin(), steps.end(),
                                   [](const ScanStep& step) { return step.result.Failed(); });
  Json json = {{"code", failed != steps.end() ? ToJson(failed->result)["code"] : Json(0)}};
  json["steps"] = Array(steps, [&](const ScanStep& step) { return StepJson(session, step); });
  json["skipped"] = session.Skipped();
  return json;
}

}  // namespace tool
