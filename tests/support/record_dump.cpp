#include "tests/support/record_dump.h"

#include <gtest/gtest.h>
#include <string_view>

#include "platform/filesystem.h"

namespace tarnmf::test {
namespace {

// Collects the fields of one line.
class Line {
 public:
  Line(int depth, std::string_view kind)
      : text_(std::string(2 * static_cast<std::size_t>(depth), ' ')) {
    text_ += kind;
  }

  Line& Number(const char* name, std::int64_t value, std::int64_t standard = 0) {
    if (value != standard) Add(name, std::to_string(value));
    return *this;
  }
  Line& Narrow(const char* name, const char* value) {
    if (value != nullptr) Add(name, "\"" + std::string(value) + "\"");
    return *this;
  }
  Line& Wide(const char* name, const btkWChar* value, bool owned = false) {
    if (value != nullptr) Add(name, "\"" + Text(value) + "\"" + (owned ? "+" : ""));
    return *this;
  }
  Line& Id(const char* name, const UniIdT& value) {
    const UniIdT null = {};
    if (!btkUniIdIsEqual(&value, &null)) Add(name, Text(value));
    return *this;
  }
  std::string End() const { return text_ + "\n"; }

 private:
  void Add(const char* name, const std::string& value) {
    text_ += " " + std::string(name) + "=" + value;
  }

  std::string text_;
};

std::string DumpPreload(const MfPreloadInfoT& preload) {
  return Line(2, "preload")
      .Number("by", preload.by)
      .Wide("name", preload.name)
      .Id("svcid", preload.svcid)
      .Id("optionid", preload.optionid)
      .End();
}

std::string DumpImpl(const MfModuleImplT& impl) {
  const std::uint32_t owned = kMfImplOwnsName | kMfImplOwnsPath;
  Line line(1, "impl");
  line.Narrow("machinetype", impl.machinetype)
      .Number("abits", impl.abits)
      .Wide("name", impl.name, (impl.flags & kMfImplOwnsName) != 0)
      .Wide("path", impl.path, (impl.flags & kMfImplOwnsPath) != 0)
      .Number("apilevel", impl.apilevel)
      .Number("version", impl.version[0])
      .Number("version[1]", impl.version[1])
      .Number("version[2]", impl.version[2])
      .Number("version[3]", impl.version[3])
      .Number("reserved", impl.reserved)
      .Number("flags", impl.flags & ~owned)
      .Narrow("resolvedPath", impl.resolvedPath);
  std::string text = line.End();
  for (const MfPreloadInfoT* preload : impl.preloads)
    text += DumpPreload(*preload);
  return text;
}

std::string DumpBase(const MfRunRoleBaseT& role) {
  std::string text;
  for (const btkWChar* arg : role.args)
    text += Line(2, "arg").Wide("text", arg).End();
  for (const EnvCmdT& command : role.env) {
    text += Line(2, "env")
                .Number("action", command.action)
                .Number("flags", command.flags)
                .Wide("name", command.name)
                .Wide("value", command.value)
                .End();
  }
  return text;
}

Line RoleLine(const char* kind, const MfRunRoleBaseT& role) {
  return Line(1, kind)
      .Number("initstate", role.initstate)
      .Narrow("launcher", role.launcher)
      .Number("reserved", role.reserved, -1);
}

std::string DumpService(const MfServiceRoleT& role) {
  return RoleLine("service", role)
             .Number("model", role.model, kMfManaged)
             .Number("csim", role.csim)
             .Number("managedtype", role.managedtype)
             .Id("id", role.id)
             .Number("multiplicity", role.multiplicity, kMfSingleInstance)
             .Narrow("commonname", role.commonname)
             .Number("version", role.version)
             .Number("recover", role.recover)
             .Number("exposed", role.exposed)
             .Number("port", role.port, -1)
             .Narrow("url", role.url)
             .End() +
         DumpBase(role);
}

std::string DumpApp(const MfAppRoleT& role) {
  return RoleLine("app", role)
             .Narrow("nameid", role.nameid)
             .Narrow("reservedText", role.reservedText)
             .End() +
         DumpBase(role);
}

std::string DumpLauncher(const MfLauncherRoleT& role) {
  Line line = RoleLine("launcher", role);
  for (const char* type : role.types)
    line.Narrow("type", type);
  return line.End() + DumpBase(role);
}

std::string DumpSide(const char* kind, const MfIntfSideT& side) {
  if (side.moduleref == nullptr && side.multiplicity == 0 && side.flags == 0) return "";
  return Line(1, kind)
      .Narrow("moduleref", side.moduleref)
      .Number("multiplicity", side.multiplicity)
      .Number("flags", side.flags)
      .End();
}

}  // namespace

std::string Dump(const MfModuleT& module) {
  std::string text =
      Line(0, "module")
          .Narrow("id", module.id)
          .Narrow("type", module.type)
          .Wide("loadpoint", module.loadpoint, (module.flags & kMfModuleOwnsLoadpoint) != 0)
          .Number("flags", module.flags & ~static_cast<std::uint32_t>(kMfModuleOwnsLoadpoint))
          .Number("reserved", module.reserved)
          .Narrow("selectedImpl", module.selectedImpl != nullptr ? "set" : nullptr)
          .End();
  for (const MfModuleImplT* impl : module.impls)
    text += DumpImpl(*impl);
  return text;
}

std::string Dump(const MfIntfClassT& record) {
  return Line(0, "class")
             .Id("id", record.ids[kMfClientSide])
             .Id("svcid", record.ids[kMfServiceSide])
             .Id("agentid", record.ids[kMfAgentSide])
             .Narrow("commonname", record.commonname)
             .Number("version", record.version)
             .Number("svcVersion", record.svcVersion)
             .Number("svcMinVersion", record.svcMinVersion)
             .Number("affinity", record.affinity)
             .Id("xsid", record.xsid)
             .Narrow("xsname", record.xsname)
             .Number("xsversion", record.xsversion, -1)
             .Number("isolation", record.isolation)
             .Number("managedtype", record.managedtype)
             .Number("exposed", record.exposed)
             .Narrow("displayname", record.displayname)
             .End() +
         DumpSide("client", record.sides[kMfClientSide]) +
         DumpSide("service", record.sides[kMfServiceSide]) +
         DumpSide("agent", record.sides[kMfAgentSide]);
}

std::string Dump(const MfRunnableT& runnable) {
  std::string text =
      Line(0, "runnable")
          .Narrow("moduleref", runnable.moduleref)
          .Wide("loadpoint", runnable.loadpoint, (runnable.flags & kMfRunnableOwnsLoadpoint) != 0)
          .End();
  for (const MfServiceRoleT* role : runnable.services)
    text += DumpService(*role);
  for (const MfAppRoleT* role : runnable.apps)
    text += DumpApp(*role);
  for (const MfLauncherRoleT* role : runnable.launchers)
    text += DumpLauncher(*role);
  return text;
}

std::string Dump(const MfLdpDataT& data) {
  std::string text;
  for (const MfModuleT* module : data.modules)
    text += Dump(*module);
  for (const MfIntfClassT* record : data.classes)
    text += Dump(*record);
  for (const MfRunnableT* runnable : data.runnables)
    text += Dump(*runnable);
  return text;
}

std::string Text(const UniIdT& id) {
  char text[kBtkUniIdDashedLength + 1] = "";
  EXPECT_EQ(btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdDashed, 0), kBtkOk);
  return text;
}

std::string Text(const btkWChar* wide) {
  return wide != nullptr ? btkFSPath(wide).NarrowText() : "(null)";
}

}  // namespace tarnmf::test
