// SPDX-License-Identifier: Apache-2.0
// What a manifest declares, with the places of it. Other than the library's records these are there
// for documents that are refused, too: as much as can be made out.
#ifndef CHECK_DECLARATIONS_H
#define CHECK_DECLARATIONS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tarnmf/values.h"

#include "check/document.h"
#include "platform/unique_id.h"

namespace tarnmf::check {

// An attribute that was given. An unreadable one counts as not given, an unknown one (Attribute::
// isKnown) as not given either.
struct TextValue {
  std::string text;
  Span span;
};
struct IdValue {
  UniIdT id{};
  Span span;
};

struct PreloadDeclaration {
  NodeId node = kNoNode;
  std::int32_t by = kMfByNone;  // with its default filled in
  std::optional<TextValue> name;
  std::optional<IdValue> svcid;
  std::optional<IdValue> optionid;
};

// The first one of a module is its own.
struct ImplementationDeclaration {
  NodeId node = kNoNode;
  std::optional<TextValue> machinetype;
  // Of a platform module with the module's in place of what it does not give.
  std::optional<TextValue> name;
  std::optional<TextValue> path;
  bool explicitName = false;
  bool forcePath = false;
  std::vector<PreloadDeclaration> preloads;
};

struct ModuleDeclaration {
  NodeId node = kNoNode;
  bool isNested = false;  // in a side
  bool isPrivate = false;
  std::optional<TextValue> id;
  std::optional<TextValue> type;       // none for a shared library
  std::optional<TextValue> loadpoint;  // also when it is empty
  std::vector<ImplementationDeclaration> implementations;
};

struct SideDeclaration {
  NodeId node = kNoNode;  // kNoNode: the class has no such side
  std::optional<TextValue> moduleref;
  std::ptrdiff_t nested = -1;  // number of the module declared inside, of Declarations::modules
  std::int32_t multiplicity = kMfAlwaysNew;

  bool IsThere() const { return node != kNoNode; }
  // The side counts in the records only when it has a module.
  bool HasModule() const { return moduleref.has_value() || nested >= 0; }
};

struct ClassDeclaration {
  NodeId node = kNoNode;
  std::optional<IdValue> id;
  std::int32_t affinity = kMfGenericClass;
  std::int32_t managedtype = kMfGeneric;
  std::optional<TextValue> commonname;
  std::array<SideDeclaration, kMfSideCount> sides;  // by MfSideT
  std::optional<IdValue> svcid;                     // a worker's default filled in
  std::optional<IdValue> xsid;
  std::optional<TextValue> xsname;
  std::int32_t xsversion = -1;
  bool exposed = false;
};

struct ServiceDeclaration {
  NodeId node = kNoNode;
  std::optional<IdValue> id;
  std::optional<TextValue> commonname;
  std::int32_t version = 0;  // as the record holds it when it is not given
  std::int32_t multiplicity = kMfSingleInstance;
  std::int32_t managedtype = kMfGeneric;
  bool exposed = false;
};

// An app or a launcher.
struct ProgramDeclaration {
  NodeId node = kNoNode;
  std::optional<TextValue> nameid;
};

struct RunnableDeclaration {
  NodeId node = kNoNode;
  std::optional<TextValue> moduleref;
  std::vector<ServiceDeclaration> services;
  std::vector<ProgramDeclaration> apps;
  std::vector<ProgramDeclaration> launchers;
};

// In the order of the library's records: a nested module comes before the class that holds it.
struct Declarations {
  std::vector<ModuleDeclaration> modules;
  std::vector<ClassDeclaration> classes;
  std::vector<RunnableDeclaration> runnables;
};

Declarations Declare(const Document& document);

}  // namespace tarnmf::check

#endif  // CHECK_DECLARATIONS_H
