// SPDX-License-Identifier: Apache-2.0
// What manifests declare, with the records of the library as its measure.
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <set>
#include <type_traits>

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
std::string Show(const UniIdT& id) {
  return Text(id);
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
template <class Number>
requires(std::is_arithmetic_v<Number> || std::is_enum_v<Number>) std::string Show(Number value) {
  return std::to_string(+value);
}

template <class... Values>
std::string Line(const char* kind, const Values&... values) {
  std::string line = kind;
  ((line += fmt::format(" [{}]", Show(values))), ...);
  return line + "\n";
}

// ---- Records and declarations, where they are called the same ------------------------------------

std::string Preload(const auto& preload) {
  return Line("preload", preload.by, preload.name, preload.svcid, preload.optionid);
}

std::string Impl(const auto& impl, bool explicitName, bool forcePath) {
  return Line("impl", impl.machinetype, impl.name, impl.path, explicitName, forcePath);
}

std::string Class(const auto& record, const auto& id, const auto& svcid) {
  return Line("class", id, record.affinity, record.managedtype, record.commonname, svcid,
              record.xsid, record.xsname, record.xsversion, record.exposed);
}

std::string Service(const auto& role) {
  return Line("service", role.id, role.commonname, role.version, role.multiplicity,
              role.managedtype, role.exposed);
}

// ---- Records -----------------------------------------------------------------------------------

std::string ShowAll(const MfLdpDataT& data) {
  std::string text;
  std::set<std::string> made;
  for (const MfModuleT* module : data.modules) {
    const bool isMade = (module->flags & kMfModuleGeneratedId) != 0;
    if (isMade) made.insert(module->id);
    text += Line("module", isMade ? "" : module->id, module->type,
                 (module->flags & kMfModulePrivate) != 0);
    for (const MfModuleImplT* impl : module->impls) {
      text += Impl(*impl, (impl->flags & kMfImplExplicitName) != 0,
                   (impl->flags & kMfImplForcePath) != 0);
      for (const MfPreloadInfoT* preload : impl->preloads)
        text += Preload(*preload);
    }
  }
  for (const MfIntfClassT* record : data.classes) {
    text += Class(*record, record->ids[0], record->ids[1]);
    for (const MfIntfSideT& side : record->sides) {
      // A side with nothing but blanks in it has no module.
      if (side.moduleref == nullptr) continue;
      text += Line("side", made.contains(side.moduleref) ? "" : side.moduleref, side.multiplicity);
    }
  }
  for (const MfRunnableT* runnable : data.runnables) {
    text += Line("runnable", runnable->moduleref);
    for (const MfServiceRoleT* role : runnable->services)
      text += Service(*role);
    for (const MfAppRoleT* role : runnable->apps)
      text += Line("app", role->nameid);
    for (const MfLauncherRoleT* role : runnable->launchers)
      text += Line("launcher", role->launcher);
  }
  return text;
}

// ---- Declarations ------------------------------------------------------------------------------

std::string ShowAll(const Declarations& declarations) {
  std::string text;
  for (const ModuleDeclaration& module : declarations.modules) {
    text += Line("module", module.id, module.type, module.isPrivate);
    for (const ImplementationDeclaration& impl : module.implementations) {
      text += Impl(impl, impl.explicitName, impl.forcePath);
      for (const PreloadDeclaration& preload : impl.preloads)
        text += Preload(preload);
    }
  }
  for (const ClassDeclaration& declaration : declarations.classes) {
    text += Class(declaration, declaration.id, declaration.svcid);
    for (const SideDeclaration& side : declaration.sides) {
      if (!side.HasModule()) continue;
      const auto nested = static_cast<std::size_t>(side.nested);
      text += Line("side", side.nested >= 0 ? declarations.modules[nested].id : side.moduleref,
                   side.multiplicity);
    }
  }
  for (const RunnableDeclaration& runnable : declarations.runnables) {
    text += Line("runnable", runnable.moduleref);
    for (const ServiceDeclaration& role : runnable.services)
      text += Service(role);
    for (const ProgramDeclaration& app : runnable.apps)
      text += Line("app", app.nameid);
    for (const ProgramDeclaration& launcher : runnable.launchers)
      text += Line("launcher", launcher.nameid);
  }
  return text;
}

TEST(Declarations, AreTheRecordsOfTheLibrary) {
  test::RandomDocuments documents(2);
  for (int i = 0; i < 10000; ++i) {
    const std::string document = documents.Next();
    MfLdpDataT data;
    if (test::Parse(document, data) != kBtkOk) continue;
    ASSERT_EQ(ShowAll(ReadManifest("test.tmfx", document)->declarations), ShowAll(data))
        << document;
  }
}

TEST(Declarations, AreThereInDocumentsThatAreRefused) {
  const std::string document = test::DocumentOf(
      "<module id=\"a\" x=\"y\"/><x><module id=\"lost\"/></x><class id=\"$1\" affinity=\"x\">"
      "<clientside moduleref=\"\"><module id=\"b\"/></clientside><clientside moduleref=\"c\"/>"
      "</class><module id=\"\"><runnable");
  EXPECT_EQ(ShowAll(ReadManifest("test.tmfx", document)->declarations),
            "module [a] [] [0]\nimpl [] [] [] [0] [0]\n"
            "module [b] [] [0]\nimpl [] [] [] [0] [0]\n"
            "module [] [] [0]\nimpl [] [] [] [0] [0]\n" +
                Line("class", test::Id(1), 0, 0, "", kBtkNullUniId, kBtkNullUniId, "", -1, false) +
                "side [b] [0]\n");
}

}  // namespace
}  // namespace tarnmf::check
