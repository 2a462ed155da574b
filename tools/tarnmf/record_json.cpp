// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/record_json.h"

#include <algorithm>

#include "tools/tarnmf/text.h"

namespace tool {
namespace {

// Next to the overloads for the records that only stand inside others.
using tool::ToJson;

template <class Char>
Json StringsJson(const MfListT<Char>& list) {
  Json array = Json::array();
  for (const Char* text : list)
    array.push_back(ToJson(text));
  return array;
}

Json ToJson(const MfPreloadInfoT& preload) {
  return {{"by", preload.by},
          {"name", ToJson(preload.name)},
          {"svcid", ToJson(preload.svcid)},
          {"optionid", ToJson(preload.optionid)}};
}

Json ToJson(const MfModuleImplT& impl) {
  Json preloads = Json::array();
  for (const MfPreloadInfoT* preload : impl.preloads)
    preloads.push_back(ToJson(*preload));
  return {{"machinetype", ToJson(impl.machinetype)},
          {"abits", impl.abits},
          {"name", ToJson(impl.name)},
          {"path", ToJson(impl.path)},
          {"apilevel", impl.apilevel},
          {"version", impl.version},
          {"flags", impl.flags},
          {"resolvedPath", ToJson(impl.resolvedPath)},
          {"preloads", std::move(preloads)}};
}

Json ToJson(const MfIntfSideT& side) {
  return {{"moduleref", ToJson(side.moduleref)},
          {"multiplicity", side.multiplicity},
          {"flags", side.flags}};
}

Json ToJson(const EnvCmdT& command) {
  return {{"action", command.action},
          {"flags", command.flags},
          {"name", ToJson(command.name)},
          {"value", ToJson(command.value)}};
}

// The fields that every role starts with.
Json BaseJson(const MfRunRoleBaseT& role) {
  Json env = Json::array();
  for (const EnvCmdT& command : role.env)
    env.push_back(ToJson(command));
  return {{"initstate", role.initstate},
          {"env", std::move(env)},
          {"args", StringsJson(role.args)},
          {"launcher", ToJson(role.launcher)}};
}

Json ToJson(const MfAppRoleT& role) {
  Json json = BaseJson(role);
  json["nameid"] = ToJson(role.nameid);
  return json;
}

Json ToJson(const MfLauncherRoleT& role) {
  Json json = BaseJson(role);
  json["types"] = StringsJson(role.types);
  return json;
}

Json SelectedJson(const MfModuleT& module) {
  const auto selected = std::find(module.impls.begin(), module.impls.end(), module.selectedImpl);
  return selected != module.impls.end() ? Json(selected - module.impls.begin()) : Json();
}

template <class Record>
Json RecordsJson(const MfListT<Record>& list) {
  Json array = Json::array();
  for (const Record* record : list)
    array.push_back(ToJson(*record));
  return array;
}

}  // namespace

Json ToJson(const UniIdT& id) {
  return IdText(id);
}
Json ToJson(const char* text) {
  return text != nullptr ? Json(text) : Json();
}
Json ToJson(const btkWChar* text) {
  return text != nullptr ? Json(Narrow(text)) : Json();
}

Json ToJson(const MfModuleT& module) {
  return {{"id", ToJson(module.id)},
          {"type", ToJson(module.type)},
          {"loadpoint", ToJson(module.loadpoint)},
          {"flags", module.flags},
          {"impls", RecordsJson(module.impls)},
          {"selectedImpl", SelectedJson(module)}};
}

Json ToJson(const MfIntfClassT& record) {
  Json ids = Json::array();
  Json sides = Json::array();
  for (std::int32_t side = 0; side < kMfSideCount; ++side) {
    ids.push_back(ToJson(record.ids[side]));
    sides.push_back(ToJson(record.sides[side]));
  }
  return {{"ids", std::move(ids)},
          {"commonname", ToJson(record.commonname)},
          {"version", record.version},
          {"svcVersion", record.svcVersion},
          {"svcMinVersion", record.svcMinVersion},
          {"affinity", record.affinity},
          {"xsid", ToJson(record.xsid)},
          {"xsname", ToJson(record.xsname)},
          {"xsversion", record.xsversion},
          {"isolation", record.isolation},
          {"managedtype", record.managedtype},
          {"exposed", record.exposed},
          {"displayname", ToJson(record.displayname)},
          {"sides", std::move(sides)}};
}

Json ToJson(const MfServiceRoleT& role) {
  Json json = BaseJson(role);
  json["model"] = role.model;
  json["csim"] = role.csim;
  json["managedtype"] = role.managedtype;
  json["id"] = ToJson(role.id);
  json["multiplicity"] = role.multiplicity;
  json["commonname"] = ToJson(role.commonname);
  json["version"] = role.version;
  json["recover"] = role.recover;
  json["exposed"] = role.exposed;
  json["port"] = role.port;
  json["url"] = ToJson(role.url);
  return json;
}

Json ToJson(const MfRunnableT& runnable) {
  return {{"moduleref", ToJson(runnable.moduleref)}, {"services", RecordsJson(runnable.services)},
          {"apps", RecordsJson(runnable.apps)},      {"launchers", RecordsJson(runnable.launchers)},
          {"loadpoint", ToJson(runnable.loadpoint)}, {"flags", runnable.flags}};
}

Json ToJson(const MfLdpDataT& data) {
  return {{"loadpoint", ToJson(data.loadpoint)},
          {"classes", RecordsJson(data.classes)},
          {"modules", RecordsJson(data.modules)},
          {"runnables", RecordsJson(data.runnables)}};
}

Json ToJson(const MfSvcResolveT& entry) {
  Json ids = Json::array();
  for (const UniIdT& id : entry.ids)
    ids.push_back(ToJson(id));
  return {{"kind", entry.kind},
          {"key", ToJson(entry.key)},
          {"ids", std::move(ids)},
          {"multiplicity", entry.multiplicity},
          {"versionKey", entry.versionKey},
          {"record", entry.record != nullptr ? ToJson(*entry.record) : Json()}};
}

}  // namespace tool
