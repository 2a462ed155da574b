#include "xml/role_elements.h"

#include <memory>
#include <new>

#include "xml/args_element.h"
#include "xml/attributes.h"
#include "xml/env_element.h"

namespace tarnmf {
namespace {

using Reader = liMfReader::RunnableReader;

using Launcher = Utf8<&MfRunRoleBaseT::launcher>;

// A launcher's own name stands where other roles name theirs.
char*& LauncherNameId(MfLauncherRoleT& role) {
  return role.launcher;
}

// A second "types" adds its words instead of being refused.
BtkErrorT ReadLauncherTypes(Reader& reader, DOMNode& attribute) {
  if (BtkErrorT e = ReadWords(AttributeText(attribute), reader.launcher->types)) return e;
  reader.flags |= Reader::kSeenTypes;
  return kBtkOk;
}

constexpr MfTagEntryT kServiceAttributes[] = {
    {"model", Attribute<Reader, Keyword<kModel, &MfServiceRoleT::model>, Reader::kSeenModel>},
    {"id", Attribute<Reader, UniqueId<&MfServiceRoleT::id>, Reader::kSeenId>},
    {"commonname", Attribute<Reader, Utf8<&MfServiceRoleT::commonname>, Reader::kSeenCommonName>},
    {"version", Attribute<Reader, Decimal<&MfServiceRoleT::version>, Reader::kSeenVersion>},
    {"launcher", Attribute<Reader, Launcher, Reader::kSeenLauncher>},
    {"csim", Attribute<Reader, Keyword<kCsim, &MfServiceRoleT::csim>, Reader::kSeenCsim>},
    {"managedtype", Attribute<Reader, Keyword<kManagedType, &MfServiceRoleT::managedtype>,
                              Reader::kSeenManagedType>},
    {"multiplicity", Attribute<Reader, Keyword<kMultiplicity, &MfServiceRoleT::multiplicity>,
                               Reader::kSeenMultiplicity>},
    {"recover", Attribute<Reader, Boolean<&MfServiceRoleT::recover>, Reader::kSeenRecover>},
    {"exposed", Attribute<Reader, Boolean<&MfServiceRoleT::exposed>, Reader::kSeenExposed>},
    {"port", Attribute<Reader, Decimal16<&MfServiceRoleT::port>, Reader::kSeenPort>},
    {"url", Attribute<Reader, Utf8<&MfServiceRoleT::url>, Reader::kSeenUrl>},
};

constexpr MfTagEntryT kAppAttributes[] = {
    {"nameid", Attribute<Reader, Utf8<&MfAppRoleT::nameid>, Reader::kSeenNameId>},
    {"launcher", Attribute<Reader, Launcher, Reader::kSeenLauncher>},
};

constexpr MfTagEntryT kLauncherAttributes[] = {
    {"nameid", Attribute<Reader, Utf8<&LauncherNameId>, Reader::kSeenNameId>},
    {"types", Element<Reader, ReadLauncherTypes>},
};

constexpr MfTagEntryT kRoleChildren[] = {
    {"args", Element<Reader, ReadArgs>},
    {"env", Element<Reader, ReadEnv>},
};

bool Given(const Reader& reader, Reader::Seen bit) {
  return (reader.flags & bit) != 0;
}

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
  MfTagTableT attributes;
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
BtkErrorT ReadRoleContent(Reader& reader, DOMNode& element, const RoleKind<Role>& kind,
                          std::unique_ptr<Role>& role) {
  if (BtkErrorT e = DispatchAttributes(element, &reader, kind.attributes)) return e;
  if (BtkErrorT e = kind.check(reader, *role)) return e;
  if (BtkErrorT e = DispatchChildren(element, &reader, kRoleChildren)) return e;
  return AppendRole(reader.runnable->*kind.list, role);
}

template <class Role>
BtkErrorT ReadRole(Reader& reader, DOMNode& element, const RoleKind<Role>& kind) {
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

BtkErrorT ReadServiceRole(Reader& reader, DOMNode& element) {
  return ReadRole(reader, element, kServiceKind);
}

BtkErrorT ReadAppRole(Reader& reader, DOMNode& element) {
  return ReadRole(reader, element, kAppKind);
}

BtkErrorT ReadLauncherRole(Reader& reader, DOMNode& element) {
  return ReadRole(reader, element, kLauncherKind);
}

}  // namespace tarnmf
