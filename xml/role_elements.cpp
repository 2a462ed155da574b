// SPDX-License-Identifier: Apache-2.0
// The roles of a runnable.
#include <memory>
#include <new>

#include "grammar/manifest.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

using Reader = liMfReader::RunnableReader;

// A second "types" adds its words instead of being refused.
struct LauncherTypes {
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    if (BtkErrorT e = ReadWords(text, reader.launcher->types)) return e;
    reader.flags |= Reader::kSeenTypes;
    return kBtkOk;
  }
};

using LauncherRow = Row<"launcher", &MfRunRoleBaseT::launcher, Reader::kSeenLauncher>;

constexpr auto kServiceAttributes =
    kAttributesOf<Reader, grammar::kService,  //
                  Row<"model", &MfServiceRoleT::model, Reader::kSeenModel>,
                  Row<"id", &MfServiceRoleT::id, Reader::kSeenId>,
                  Row<"commonname", &MfServiceRoleT::commonname, Reader::kSeenCommonName>,
                  Row<"version", &MfServiceRoleT::version, Reader::kSeenVersion>, LauncherRow,
                  Row<"csim", &MfServiceRoleT::csim, Reader::kSeenCsim>,
                  Row<"managedtype", &MfServiceRoleT::managedtype, Reader::kSeenManagedType>,
                  Row<"multiplicity", &MfServiceRoleT::multiplicity, Reader::kSeenMultiplicity>,
                  Row<"recover", &MfServiceRoleT::recover, Reader::kSeenRecover>,
                  Row<"exposed", &MfServiceRoleT::exposed, Reader::kSeenExposed>,
                  Row<"port", &MfServiceRoleT::port, Reader::kSeenPort>,
                  Row<"url", &MfServiceRoleT::url, Reader::kSeenUrl>>;

constexpr auto kAppAttributes =
    kAttributesOf<Reader, grammar::kApp, Row<"nameid", &MfAppRoleT::nameid, Reader::kSeenNameId>,
                  LauncherRow>;

constexpr auto kLauncherAttributes =
    kAttributesOf<Reader, grammar::kLauncher,
                  Row<"nameid", &MfRunRoleBaseT::launcher, Reader::kSeenNameId>,
                  RepeatableRow<"types", LauncherTypes>>;

static_assert(grammar::kApp.children.data() == grammar::kService.children.data() &&
              grammar::kLauncher.children.data() == grammar::kService.children.data());
constexpr auto kRoleChildren =
    kChildrenOf<Reader, grammar::kService, Child<"args", &ReadArgs>, Child<"env", &ReadEnv>>;

BtkErrorT CheckService(const Reader& reader, MfServiceRoleT& role) {
  if (!Given(reader, Reader::kSeenId)) return kBtkMissing;
  if (Given(reader, Reader::kSeenVersion) && !Given(reader, Reader::kSeenCommonName)) {
    return kBtkForbidden;
  }
  // Containers are made anew for whoever asks and host classes, whatever was said about it.
  if (Given(reader, Reader::kSeenManagedType) && role.managedtype == kMfContainer) {
    role.multiplicity = kMfAlwaysNew;
    role.csim = kMfClassBased;
  }
  return kBtkOk;
}

BtkErrorT CheckApp(const Reader& reader, MfAppRoleT&) {
  return Given(reader, Reader::kSeenNameId) ? kBtkOk : kBtkMissing;
}

BtkErrorT CheckLauncher(const Reader& reader, MfLauncherRoleT&) {
  const bool complete = Given(reader, Reader::kSeenNameId) && Given(reader, Reader::kSeenTypes);
  return complete ? kBtkOk : kBtkMissing;
}

// What tells one kind of role from another.
template <class Role>
struct RoleKind {
  Role* Reader::*current;
  const AttributeTable<Reader>& attributes;
  BtkErrorT (*check)(const Reader&, Role&);
  MfListT<Role> MfRunnableT::*list;
};

constexpr RoleKind<MfServiceRoleT> kServiceKind = {&Reader::service, kServiceAttributes,
                                                   CheckService, &MfRunnableT::services};
constexpr RoleKind<MfAppRoleT> kAppKind = {&Reader::app, kAppAttributes, CheckApp,
                                           &MfRunnableT::apps};
constexpr RoleKind<MfLauncherRoleT> kLauncherKind = {&Reader::launcher, kLauncherAttributes,
                                                     CheckLauncher, &MfRunnableT::launchers};

// The lists of a runnable are exactly sized at all times.
template <class Role>
BtkErrorT AppendRole(MfListT<Role>& list, std::unique_ptr<Role>& role) {
  GrowableArray<Role*, 1, DeletesElements> roles;
  roles.Adopt(list);
  const bool appended = roles.Append(role.get());
  roles.HandOver(list);
  if (!appended) return kBtkNoMemory;
  role.release();
  return kBtkOk;
}

template <class Role>
BtkErrorT ReadRoleContent(Reader& reader, const Element& element, const RoleKind<Role>& kind,
                          std::unique_ptr<Role>& role) {
  if (BtkErrorT e = DispatchAttributes(element, reader, kind.attributes)) return e;
  if (BtkErrorT e = kind.check(reader, *role)) return e;
  if (BtkErrorT e = DispatchChildren(element, reader, kRoleChildren)) return e;
  return AppendRole(reader.runnable->*kind.list, role);
}

template <class Role>
BtkErrorT ReadRole(Reader& reader, const Element& element, const RoleKind<Role>& kind) {
  reader.flags &= ~Reader::kSeenOfRole;
  std::unique_ptr<Role> role(new (std::nothrow) Role);
  if (!role) return kBtkNoMemory;
  reader.*kind.current = role.get();
  reader.role = role.get();
  const BtkErrorT result = ReadRoleContent(reader, element, kind, role);
  reader.*kind.current = nullptr;
  reader.role = nullptr;
  return result;
}

}  // namespace

BtkErrorT ReadServiceRole(Reader& reader, const Element& element) {
  return ReadRole(reader, element, kServiceKind);
}

BtkErrorT ReadAppRole(Reader& reader, const Element& element) {
  return ReadRole(reader, element, kAppKind);
}

BtkErrorT ReadLauncherRole(Reader& reader, const Element& element) {
  return ReadRole(reader, element, kLauncherKind);
}

}  // namespace tarnmf
