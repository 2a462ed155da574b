// What manifests declare, with the records of the library as its measure.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <set>

#include "tarnmf/ldp_data.h"

#include "check/manifest.h"
#include "tests/support/documents.h"
#include "tests/support/ids.h"
#include "tests/support/parse.h"
#include "tests/support/random_documents.h"
#include "tests/support/record_dump.h"

namespace tarnmf::check {
namespace {

using test::Text;

// ---- What is not given shows as nothing, on both sides -----------------------------------------

std::string Show(const std::optional<TextValue>& value) {
  return value ? value->text : "";
}
std::string Show(const std::optional<IdValue>& value) {
  return Text(value ? value->id : kBtkNullUniId);
}
std::string Show(const char* text) {
  return text != nullptr ? text : "";
}
std::string Show(const btkWChar* text) {
  return text != nullptr ? Text(text) : "";
}

template <class... Values>
std::string Line(const char* kind, const Values&... values) {
  std::string line = kind;
  ((line += fmt::format(" [{}]", values)), ...);
  return line + "\n";
}

// ---- Records -----------------------------------------------------------------------------------

std::string Show(const MfModuleT& module) {
  const bool isMade = (module.flags & kMfModuleGeneratedId) != 0;
  std::string text = Line("module", isMade ? "" : Show(module.id), Show(module.type),
                          (module.flags & kMfModulePrivate) != 0);
  for (const MfModuleImplT* impl : module.impls) {
    text += Line("impl", Show(impl->machinetype), Show(impl->name), Show(impl->path),
                 (impl->flags & kMfImplExplicitName) != 0, (impl->flags & kMfImplForcePath) != 0);
    for (const MfPreloadInfoT* preload : impl->preloads) {
      text += Line("preload", +preload->by, Show(preload->name), Text(preload->svcid),
                   Text(preload->optionid));
    }
  }
  return text;
}

// A side with nothing but blanks in it has no module.
std::string Show(const MfIntfClassT& record, const std::set<std::string>& made) {
  std::string text = Line("class", Text(record.ids[0]), +record.affinity, +record.managedtype,
                          Show(record.commonname), Text(record.ids[1]), Text(record.xsid),
                          Show(record.xsname), record.xsversion, record.exposed);
  for (const MfIntfSideT& side : record.sides) {
    const std::string ref = Show(side.moduleref);
    if (side.moduleref != nullptr)
      text += Line("side", made.contains(ref) ? "" : ref, +side.multiplicity);
  }
  return text;
}

std::string Show(const MfRunnableT& runnable) {
  std::string text = Line("runnable", Show(runnable.moduleref));
  for (const MfServiceRoleT* role : runnable.services) {
    text += Line("service", Text(role->id), Show(role->commonname), role->version,
                 +role->multiplicity, +role->managedtype, role->exposed);
  }
  for (const MfAppRoleT* role : runnable.apps)
    text += Line("app", Show(role->nameid));
  for (const MfLauncherRoleT* role : runnable.launchers)
    text += Line("launcher", Show(role->launcher));
  return text;
}

std::string Show(const MfLdpDataT& data) {
  std::string text;
  std::set<std::string> made;
  for (const MfModuleT* module : data.modules) {
    text += Show(*module);
    if ((module->flags & kMfModuleGeneratedId) != 0) made.insert(module->id);
  }
  for (const MfIntfClassT* record : data.classes)
    text += Show(*record, made);
  for (const MfRunnableT* runnable : data.runnables)
    text += Show(*runnable);
  return text;
}

// ---- Declarations ------------------------------------------------------------------------------

std::string Show(const ModuleDeclaration& module) {
  std::string text = Line("module", Show(module.id), Show(module.type), module.isPrivate);
  for (const ImplementationDeclaration& impl : module.implementations) {
    text += Line("impl", Show(impl.machinetype), Show(impl.name), Show(impl.path),
                 impl.explicitName, impl.forcePath);
    for (const PreloadDeclaration& preload : impl.preloads) {
      text += Line("preload", preload.by, Show(preload.name), Show(preload.svcid),
                   Show(preload.optionid));
    }
  }
  return text;
}

std::string Show(const ClassDeclaration& declaration, const Declarations& all) {
  std::string text =
      Line("class", Show(declaration.id), declaration.affinity, declaration.managedtype,
           Show(declaration.commonname), Show(declaration.svcid), Show(declaration.xsid),
           Show(declaration.xsname), declaration.xsversion, declaration.exposed);
  for (const SideDeclaration& side : declaration.sides) {
    if (!side.HasModule()) continue;
    const bool isNested = side.nested >= 0;
    text += Line(
        "side",
        Show(isNested ? all.modules[static_cast<std::size_t>(side.nested)].id : side.moduleref),
        side.multiplicity);
  }
  return text;
}

std::string Show(const RunnableDeclaration& runnable) {
  std::string text = Line("runnable", Show(runnable.moduleref));
  for (const ServiceDeclaration& role : runnable.services) {
    text += Line("service", Show(role.id), Show(role.commonname), role.version, role.multiplicity,
                 role.managedtype, role.exposed);
  }
  for (const ProgramDeclaration& app : runnable.apps)
    text += Line("app", Show(app.nameid));
  for (const ProgramDeclaration& launcher : runnable.launchers)
    text += Line("launcher", Show(launcher.nameid));
  return text;
}

std::string Show(const Declarations& declarations) {
  std::string text;
  for (const ModuleDeclaration& module : declarations.modules)
    text += Show(module);
  for (const ClassDeclaration& declaration : declarations.classes)
    text += Show(declaration, declarations);
  for (const RunnableDeclaration& runnable : declarations.runnables)
    text += Show(runnable);
  return text;
}

TEST(Declarations, AreTheRecordsOfTheLibrary) {
  test::RandomDocuments documents(2);
  for (int i = 0; i < 10000; ++i) {
    const std::string document = documents.Next();
    MfLdpDataT data;
    if (test::Parse(document, data) != kBtkOk) continue;
    ASSERT_EQ(Show(ReadManifest("test.tmfx", document)->declarations), Show(data)) << document;
  }
}

TEST(Declarations, AreThereInDocumentsThatAreRefused) {
  const std::string document = test::DocumentOf(
      "<module id=\"a\" x=\"y\"/><x><module id=\"lost\"/></x><class id=\"$1\" affinity=\"x\">"
      "<clientside moduleref=\"\"><module id=\"b\"/></clientside><clientside moduleref=\"c\"/>"
      "</class><module id=\"\"><runnable");
  EXPECT_EQ(Show(ReadManifest("test.tmfx", document)->declarations),
            "module [a] [] [false]\nimpl [] [] [] [false] [false]\n"
            "module [b] [] [false]\nimpl [] [] [] [false] [false]\n"
            "module [] [] [false]\nimpl [] [] [] [false] [false]\n" +
                Line("class", Text(test::Id(1)), 0, 0, "", Text(kBtkNullUniId), Text(kBtkNullUniId),
                     "", -1, false) +
                "side [b] [0]\n");
}

}  // namespace
}  // namespace tarnmf::check
