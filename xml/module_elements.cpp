// SPDX-License-Identifier: Apache-2.0
// "module", "modules" and what stands below them.
#include <algorithm>
#include <iterator>
#include <memory>
#include <new>

#include "grammar/manifest.h"
#include "platform/dlm.h"
#include "support/owned.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

using ModuleReader = liMfReader::ModuleReader;
using ModuleMfReader = liMfReader::ModuleMfReader;

// ---- Attributes --------------------------------------------------------------------------------

// The default type is never stored.
struct ModuleType {
  static BtkErrorT Read(ModuleReader& reader, const btkWChar* text) {
    Utf8Text type;
    if (BtkErrorT e = ReadText(text, type)) return e;
    if (*type == '\0') return kBtkMalformed;
    if (!btkIsSharedLibType(type.get())) reader.module->type = type.release();
    return kBtkOk;
  }
};

// An empty load point means that the module has none.
struct ModuleLoadpoint {
  static BtkErrorT Read(ModuleReader& reader, const btkWChar* text) {
    WideText loadpoint;
    if (BtkErrorT e = ReadText(text, loadpoint)) return e;
    if (*loadpoint == 0) return kBtkOk;
    reader.module->loadpoint = loadpoint.release();
    reader.module->flags |= kMfModuleOwnsLoadpoint;
    return kBtkOk;
  }
};

struct AddressBits {
  static BtkErrorT Read(ModuleReader& reader, const btkWChar* text) {
    std::int32_t bits = 0;
    if (BtkErrorT e = ReadDecimal(text, bits)) return e;
    if (bits != 32 && bits != 64) return kBtkMalformed;
    reader.impl->abits = bits;
    return kBtkOk;
  }
};

// Admitted for the version's sake, but its text says nothing.
struct ImplVersion {
  static BtkErrorT Read(ModuleReader& reader, const btkWChar*) {
    std::fill(std::begin(reader.impl->version), std::end(reader.impl->version), 0U);
    return kBtkOk;
  }
};

using ImplName = OwnedRow<"name", &MfModuleImplT::name, &MfModuleImplT::flags, kMfImplOwnsName,
                          ModuleReader::kSeenName>;
using ImplExplicitName = FlagRow<"explicitname", &MfModuleImplT::flags, kMfImplExplicitName,
                                 ModuleReader::kSeenExplicitName>;
using ImplPath = OwnedRow<"path", &MfModuleImplT::path, &MfModuleImplT::flags, kMfImplOwnsPath,
                          ModuleReader::kSeenPath>;
using ImplForcePath =
    FlagRow<"forcepath", &MfModuleImplT::flags, kMfImplForcePath, ModuleReader::kSeenForcePath>;
using ImplApiLevel = Row<"apilevel", &MfModuleImplT::apilevel, ModuleReader::kSeenApiLevel>;
using ImplVersionRow = SpecialRow<"version", ImplVersion, ModuleReader::kSeenVersion>;

// clang-format off
constexpr auto kModuleAttributes = kAttributesOf<
    ModuleReader, grammar::kModule,
    SpecialRow<"type", ModuleType, ModuleReader::kSeenType>,
    Row<"id", &MfModuleT::id, ModuleReader::kSeenId>,
    ImplName,
    ImplExplicitName,
    SpecialRow<"loadpoint", ModuleLoadpoint, ModuleReader::kSeenLoadpoint>,
    ImplPath,
    ImplForcePath,
    UnreadRow<"resolvepath">,
    UnreadRow<"description">,
    ImplApiLevel,
    ImplVersionRow,
    FlagRow<"private", &MfModuleT::flags, kMfModulePrivate, ModuleReader::kSeenPrivate>,
    SpecialRow<"abits", AddressBits, ModuleReader::kSeenABits>>;

constexpr auto kPlatformModuleAttributes = kAttributesOf<
    ModuleReader, grammar::kPlatformModule,
    Row<"machinetype", &MfModuleImplT::machinetype, ModuleReader::kSeenMachineType>,
    ImplName,
    ImplExplicitName,
    ImplPath,
    ImplForcePath,
    UnreadRow<"resolvepath">,
    ImplApiLevel,
    ImplVersionRow>;
// clang-format on

constexpr auto kPreloadAttributes =
    kAttributesOf<ModuleReader, grammar::kPreload,  //
                  Row<"by", &MfPreloadInfoT::by, ModuleReader::kSeenBy>,
                  Row<"name", &MfPreloadInfoT::name, ModuleReader::kSeenPreloadName>,
                  Row<"svcid", &MfPreloadInfoT::svcid, ModuleReader::kSeenSvcId>,
                  Row<"optionid", &MfPreloadInfoT::optionid, ModuleReader::kSeenOptionId>>;

// ---- Preload conditions ------------------------------------------------------------------------

// Without "by", what else was given says who triggers the preload.
MfPreloadByT ImpliedBy(const ModuleReader& reader) {
  if (Given(reader, ModuleReader::kSeenSvcId)) return kMfByService;
  if (Given(reader, ModuleReader::kSeenPreloadName)) return kMfByExecutable;
  return kMfByNone;
}

BtkErrorT CheckPreload(const ModuleReader& reader, MfPreloadByT by) {
  const bool hasName = Given(reader, ModuleReader::kSeenPreloadName);
  const bool hasSvcId = Given(reader, ModuleReader::kSeenSvcId);
  if (by == kMfByAnyone && (hasName || hasSvcId)) return kBtkMissing;
  if (by == kMfByClient && hasSvcId) return kBtkMissing;
  if (by == kMfByExecutable && !hasName) return kBtkMissing;
  return kBtkOk;
}

BtkErrorT ReadPreload(ModuleReader& reader, const Element& element) {
  std::unique_ptr<MfPreloadInfoT> preload(new (std::nothrow) MfPreloadInfoT);
  if (!preload) return kBtkNoMemory;
  reader.preload = preload.get();
  reader.flags &= ~ModuleReader::kSeenOfPreload;

  if (BtkErrorT e = DispatchAttributes(element, reader, kPreloadAttributes)) return e;
  if (preload->by == kMfByNone) preload->by = ImpliedBy(reader);
  if (BtkErrorT e = CheckPreload(reader, preload->by)) return e;
  if (FirstElement(element) != nullptr) return kBtkUnexpected;

  if (!reader.preloads[reader.inPlatformModule ? 1 : 0].Append(preload.get())) return kBtkNoMemory;
  preload.release();
  return kBtkOk;
}

// ---- Implementations for one machine type ------------------------------------------------------

constexpr auto kPlatformModuleChildren =
    kChildrenOf<ModuleReader, grammar::kPlatformModule, Child<"preload", &ReadPreload>>;

BtkErrorT CheckPlatformModule(const ModuleReader& reader) {
  if (!Given(reader, ModuleReader::kSeenMachineType)) return kBtkMissing;
  if (Given(reader, ModuleReader::kSeenForcePath) && !Given(reader, ModuleReader::kSeenPath)) {
    return kBtkMissing;
  }
  if (Given(reader, ModuleReader::kSeenExplicitName) && !Given(reader, ModuleReader::kSeenName)) {
    return kBtkMissing;
  }
  return Given(reader, ModuleReader::kSeenOfImplementation) ? kBtkOk : kBtkMissing;
}

// Takes over from the module's own implementation what this one did not give. Texts are borrowed:
// both are destroyed with the same module.
void Inherit(MfModuleImplT& impl, const MfModuleImplT& own, const ModuleReader& reader) {
  if (!Given(reader, ModuleReader::kSeenName)) {
    impl.name = own.name;
    impl.flags |= own.flags & kMfImplExplicitName;
  }
  if (!Given(reader, ModuleReader::kSeenPath)) {
    impl.path = own.path;
    impl.flags |= own.flags & kMfImplForcePath;
  }
  if (!Given(reader, ModuleReader::kSeenApiLevel)) impl.apilevel = own.apilevel;
  if (!Given(reader, ModuleReader::kSeenVersion)) {
    std::copy(std::begin(own.version), std::end(own.version), impl.version);
  }
}

// One more implementation of the module at hand.
BtkErrorT ReadPlatformModule(ModuleReader& reader, const Element& element) {
  std::unique_ptr<MfModuleImplT> impl(new (std::nothrow) MfModuleImplT);
  if (!impl) return kBtkNoMemory;
  reader.impl = impl.get();
  reader.flags &= ~(ModuleReader::kSeenOfImplementation | ModuleReader::kSeenMachineType |
                    ModuleReader::kSeenOfPreload);

  if (BtkErrorT e = DispatchAttributes(element, reader, kPlatformModuleAttributes)) return e;
  if (BtkErrorT e = CheckPlatformModule(reader)) return e;

  reader.inPlatformModule = true;
  const BtkErrorT childrenResult = DispatchChildren(element, reader, kPlatformModuleChildren);
  reader.inPlatformModule = false;
  if (childrenResult != kBtkOk) return childrenResult;

  reader.preloads[1].HandOver(impl->preloads);
  Inherit(*impl, *reader.impls[0], reader);
  if (!reader.impls.Append(impl.get())) return kBtkNoMemory;
  impl.release();
  return kBtkOk;
}

// ---- Modules -----------------------------------------------------------------------------------

constexpr auto kModuleChildren =
    kChildrenOf<ModuleReader, grammar::kModule, Child<"preload", &ReadPreload>,
                Child<"platformmodule", &ReadPlatformModule>>;

constexpr std::uint32_t kFirstVersion[4] = {1, 0, 0, 0};

// A module that names no load point lies in the one that it is read for, which the empty text
// stands for until the loader lends its own.
BtkErrorT DefaultPlace(const ModuleReader& reader, MfModuleT& module, MfModuleImplT& impl) {
  if (Given(reader, ModuleReader::kSeenLoadpoint)) return kBtkOk;
  if (!Given(reader, ModuleReader::kSeenPath)) {
    impl.path = btk_wcsdup(BTK_W(""));
    if (impl.path == nullptr) return kBtkNoMemory;
    impl.flags |= kMfImplOwnsPath;
  }
  module.loadpoint = btk_wcsdup(BTK_W(""));
  if (module.loadpoint == nullptr) return kBtkNoMemory;
  module.flags |= kMfModuleOwnsLoadpoint;
  return kBtkOk;
}

BtkErrorT ReadDocumentModule(ModuleMfReader& reader, const Element& element) {
  if (BtkErrorT e = AdmitOneMore(reader)) return e;
  const std::unique_ptr<ModuleReader> moduleReader(reader.CreateModuleReader(reader.modules));
  if (!moduleReader) return kBtkNoMemory;
  if (BtkErrorT e = ReadModule(*moduleReader, element)) return e;

  MfModuleT& module = *reader.modules->Last();
  if (module.id == nullptr) {
    delete reader.modules->TakeLast();
    return kBtkMissing;
  }
  MfModuleImplT& own = *module.impls[0];
  if (own.version[0] == 0) {
    std::copy(std::begin(kFirstVersion), std::end(kFirstVersion), own.version);
  }
  reader.flags |= kReadOne;
  return kBtkOk;
}

constexpr auto kModulesChildren =
    kChildrenOf<ModuleMfReader, grammar::kModules, Child<"module", &ReadDocumentModule>>;

BtkErrorT ReadModules(ModuleMfReader& reader, const Element& element) {
  return ReadListElement(reader, element, kModulesChildren);
}

}  // namespace

constinit const ElementTable<ModuleMfReader> kDocumentModules =
    kChildrenOf<ModuleMfReader, grammar::kModuleManifest, Child<"module", &ReadDocumentModule>,
                Child<"modules", &ReadModules>>;

BtkErrorT ReadModule(ModuleReader& reader, const Element& element) {
  std::unique_ptr<MfModuleT> module(new (std::nothrow) MfModuleT);
  std::unique_ptr<MfModuleImplT> own(new (std::nothrow) MfModuleImplT);
  if (!module || !own) return kBtkNoMemory;
  reader.module = module.get();
  reader.impl = own.get();

  if (BtkErrorT e = DispatchAttributes(element, reader, kModuleAttributes)) return e;
  if (!Given(reader, ModuleReader::kSeenName)) return kBtkMissing;
  if (BtkErrorT e = DefaultPlace(reader, *module, *own)) return e;

  if (!reader.impls.Append(own.get())) return kBtkNoMemory;
  MfModuleImplT* const first = own.release();
  const BtkErrorT childrenResult = DispatchChildren(element, reader, kModuleChildren);
  reader.preloads[0].HandOver(first->preloads);
  reader.impls.HandOver(module->impls);
  if (childrenResult != kBtkOk) return childrenResult;

  if (!reader.modules->Append(module.get())) return kBtkNoMemory;
  module.release();
  return kBtkOk;
}

}  // namespace tarnmf
