// SPDX-License-Identifier: Apache-2.0
#include "tests/support/record_dump.h"

#include <type_traits>

#include "platform/filesystem.h"

namespace tarnmf::test {
namespace {

std::string Shown(const char* name, const std::string& value) {
  return " " + std::string(name) + "=" + value;
}
std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

// A field of a record; nothing when it has its default value.
template <class Number>
requires(std::is_arithmetic_v<Number> || std::is_enum_v<Number>) std::string
    Field(const char* name, Number value, Number standard = Number{}) {
  return value != standard ? Shown(name, std::to_string(+value)) : "";
}
std::string Field(const char* name, const char* text) {
  return text != nullptr ? Shown(name, Quoted(text)) : "";
}
std::string Field(const char* name, const btkWChar* text, bool owned = false) {
  return text != nullptr ? Shown(name, Quoted(Text(text)) + (owned ? "+" : "")) : "";
}
std::string Field(const char* name, const UniIdT& id) {
  return !btkUniIdIsNull(id) ? Shown(name, Text(id)) : "";
}

std::string Line(std::size_t depth, const char* kind, const std::string& fields) {
  return std::string(2 * depth, ' ') + kind + fields + "\n";
}

template <class Records, class Dumper>
std::string DumpAll(const Records& records, Dumper dump) {
  std::string text;
  for (const auto& record : records)
    text += dump(record);
  return text;
}

std::string DumpImpl(const MfModuleImplT* impl) {
  const std::uint32_t owned = kMfImplOwnsName | kMfImplOwnsPath;
  const bool ownsName = (impl->flags & kMfImplOwnsName) != 0;
  const bool ownsPath = (impl->flags & kMfImplOwnsPath) != 0;
  return Line(1, "impl",
              Field("machinetype", impl->machinetype) + Field("abits", impl->abits) +
                  Field("name", impl->name, ownsName) + Field("path", impl->path, ownsPath) +
                  Field("apilevel", impl->apilevel) + Field("version", impl->version[0]) +
                  Field("version[1]", impl->version[1]) + Field("version[2]", impl->version[2]) +
                  Field("version[3]", impl->version[3]) + Field("reserved", impl->reserved) +
                  Field("flags", impl->flags & ~owned) +
                  Field("resolvedPath", impl->resolvedPath)) +
         DumpAll(impl->preloads, [](const MfPreloadInfoT* preload) {
           return Line(2, "preload",
                       Field("by", preload->by) + Field("name", preload->name) +
                           Field("svcid", preload->svcid) + Field("optionid", preload->optionid));
         });
}

std::string DumpRole(const char* kind, const MfRunRoleBaseT& role, const std::string& fields) {
  return Line(1, kind,
              Field("initstate", role.initstate) + Field("launcher", role.launcher) +
                  Field("reserved", role.reserved, -1) + fields) +
         DumpAll(role.args,
                 [](const btkWChar* arg) { return Line(2, "arg", Field("text", arg)); }) +
         DumpAll(role.env, [](const EnvCmdT& command) {
           return Line(2, "env",
                       Field("action", command.action) + Field("flags", command.flags) +
                           Field("name", command.name) + Field("value", command.value));
         });
}

std::string DumpService(const MfServiceRoleT* role) {
  return DumpRole("service", *role,
                  Field("model", role->model, kMfManaged) + Field("csim", role->csim) +
                      Field("managedtype", role->managedtype) + Field("id", role->id) +
                      Field("multiplicity", role->multiplicity, kMfSingleInstance) +
                      Field("commonname", role->commonname) + Field("version", role->version) +
                      Field("recover", role->recover) + Field("exposed", role->exposed) +
                      Field("port", role->port, std::int16_t{-1}) + Field("url", role->url));
}

std::string DumpApp(const MfAppRoleT* role) {
  return DumpRole("app", *role,
                  Field("nameid", role->nameid) + Field("reservedText", role->reservedText));
}

std::string DumpLauncher(const MfLauncherRoleT* role) {
  return DumpRole("launcher", *role,
                  DumpAll(role->types, [](const char* type) { return Field("type", type); }));
}

std::string DumpSide(const char* kind, const MfIntfSideT& side) {
  const std::string fields = Field("moduleref", side.moduleref) +
                             Field("multiplicity", side.multiplicity) + Field("flags", side.flags);
  return fields.empty() ? "" : Line(1, kind, fields);
}

}  // namespace

std::string Dump(const MfModuleT& module) {
  const std::uint32_t owned = kMfModuleOwnsLoadpoint;
  return Line(0, "module",
              Field("id", module.id) + Field("type", module.type) +
                  Field("loadpoint", module.loadpoint, (module.flags & owned) != 0) +
                  Field("flags", module.flags & ~owned) + Field("reserved", module.reserved) +
                  (module.selectedImpl != nullptr ? " selectedImpl" : "")) +
         DumpAll(module.impls, DumpImpl);
}

std::string Dump(const MfIntfClassT& record) {
  return Line(0, "class",
              Field("id", record.ids[kMfClientSide]) + Field("svcid", record.ids[kMfServiceSide]) +
                  Field("agentid", record.ids[kMfAgentSide]) +
                  Field("commonname", record.commonname) + Field("version", record.version) +
                  Field("svcVersion", record.svcVersion) +
                  Field("svcMinVersion", record.svcMinVersion) +
                  Field("affinity", record.affinity) + Field("xsid", record.xsid) +
                  Field("xsname", record.xsname) + Field("xsversion", record.xsversion, -1) +
                  Field("isolation", record.isolation) + Field("managedtype", record.managedtype) +
                  Field("exposed", record.exposed) + Field("displayname", record.displayname)) +
         DumpSide("client", record.sides[kMfClientSide]) +
         DumpSide("service", record.sides[kMfServiceSide]) +
         DumpSide("agent", record.sides[kMfAgentSide]);
}

std::string Dump(const MfRunnableT& runnable) {
  const bool owned = (runnable.flags & kMfRunnableOwnsLoadpoint) != 0;
  return Line(0, "runnable",
              Field("moduleref", runnable.moduleref) +
                  Field("loadpoint", runnable.loadpoint, owned)) +
         DumpAll(runnable.services, DumpService) + DumpAll(runnable.apps, DumpApp) +
         DumpAll(runnable.launchers, DumpLauncher);
}

std::string Dump(const MfLdpDataT& data) {
  const auto dump = [](const auto* record) { return Dump(*record); };
  return DumpAll(data.modules, dump) + DumpAll(data.classes, dump) + DumpAll(data.runnables, dump);
}

std::string DumpWithoutFreshIds(const MfLdpDataT& data) {
  std::string dump = Dump(data);
  for (const MfModuleT* module : data.modules) {
    if ((module->flags & kMfModuleGeneratedId) == 0) continue;
    const std::string id = module->id;
    for (std::size_t at = 0; (at = dump.find(id, at)) != std::string::npos;)
      dump.replace(at, id.size(), "fresh");
  }
  return dump;
}

std::string Text(const UniIdT& id) {
  char text[kBtkUniIdDashedLength + 1];
  const BtkErrorT e = btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdDashed, 0);
  return e == kBtkOk ? text : "no id";
}

std::string Text(const btkWChar* wide) {
  return wide != nullptr ? btkFSPath(wide).NarrowText() : "(null)";
}

}  // namespace tarnmf::test
