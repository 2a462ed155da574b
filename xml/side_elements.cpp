// SPDX-License-Identifier: Apache-2.0
// The sides of a class.
#include <memory>

#include "grammar/manifest.h"
#include "platform/unique_id.h"
#include "support/owned.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

using Reader = liMfReader::ClassReader;
using ModuleReader = liMfReader::ModuleReader;

UniIdT& ServiceSideId(MfIntfClassT& record) {
  return record.ids[kMfServiceSide];
}

struct SideMultiplicity {
  static BtkErrorT Read(Reader& reader, const btkWChar* text) {
    using Any = Keyword<grammar::kMultiplicityWords, &MfIntfSideT::multiplicity>;
    if (BtkErrorT e = Any::Read(reader, text)) return e;
    reader.Target(RecordTag<MfIntfSideT>()).flags |= kMfSideMultiplicityGiven;
    return kBtkOk;
  }
};

using ModuleRefRow = Row<"moduleref", &MfIntfSideT::moduleref, Reader::kSeenModuleRef>;
using MultiplicityRow = SpecialRow<"multiplicity", SideMultiplicity, Reader::kSeenMultiplicity>;

static_assert(grammar::kClientSide.attributes.data() == grammar::kAgentSide.attributes.data());
constexpr auto kSideAttributes =
    kAttributesOf<Reader, grammar::kClientSide, ModuleRefRow, MultiplicityRow>;

constexpr auto kServiceSideAttributes =
    kAttributesOf<Reader, grammar::kServiceSide, ModuleRefRow, MultiplicityRow,
                  Row<"svcid", &ServiceSideId, Reader::kSeenSvcId>,
                  Row<"xsid", &MfIntfClassT::xsid, Reader::kSeenXsId>,
                  Row<"xsname", &MfIntfClassT::xsname, Reader::kSeenXsName>,
                  Row<"xsversion", &MfIntfClassT::xsversion, Reader::kSeenXsVersion>,
                  Row<"isolation", &MfIntfClassT::isolation, Reader::kSeenIsolation>,
                  Row<"exposed", &MfIntfClassT::exposed, Reader::kSeenExposed>>;

// Classes refer to modules by id, so a nested module without one is given a fresh id.
BtkErrorT GenerateId(MfModuleT& module) {
  UniIdT id;
  if (BtkErrorT e = btkUniIdGen14(&id, kBtkUniIdRandom, 0)) return e;
  char text[kBtkUniIdPlainLength + 1];
  if (BtkErrorT e = btkUniIdFormat(text, sizeof text, nullptr, &id, kBtkUniIdPlain, 0)) return e;
  module.id = btk_strdup(text);
  if (module.id == nullptr) return kBtkNoMemory;
  module.flags |= kMfModuleGeneratedId;
  return kBtkOk;
}

BtkErrorT ReadNestedModule(Reader& reader, const Element& element) {
  if (Given(reader, Reader::kSeenModuleRef)) return kBtkDuplicate;
  const std::unique_ptr<ModuleReader> moduleReader(reader.CreateModuleReader(reader.modules));
  if (!moduleReader) return kBtkNoMemory;
  if (BtkErrorT e = ReadModule(*moduleReader, element)) return e;

  MfModuleT& module = *reader.modules->Last();
  if (module.type != nullptr) {
    delete reader.modules->TakeLast();
    return kBtkNotSharedLib;
  }
  if (module.id == nullptr) {
    if (BtkErrorT e = GenerateId(module)) return e;
  }
  char*& moduleref = reader.Target(RecordTag<MfIntfSideT>()).moduleref;
  moduleref = btk_strdup(module.id);
  if (moduleref == nullptr) return kBtkNoMemory;
  reader.flags |= Reader::kSeenModuleRef;
  return kBtkOk;
}

static_assert(grammar::kServiceSide.children.data() == grammar::kClientSide.children.data() &&
              grammar::kAgentSide.children.data() == grammar::kClientSide.children.data());
constexpr auto kSideChildren =
    kChildrenOf<Reader, grammar::kClientSide, Child<"module", &ReadNestedModule>>;

// A side names its module or holds it. Any child node counts, white space included.
BtkErrorT ReadNestedModules(Reader& reader, const Element& element) {
  if (Given(reader, Reader::kSeenModuleRef)) return kBtkDuplicate;
  return DispatchChildren(element, reader, kSideChildren);
}

// The next side of the class starts with its own attributes.
void FinishSide(Reader& reader, Reader::Seen sideRead) {
  reader.flags = (reader.flags & ~Reader::kSeenOfSide) | sideRead;
}

BtkErrorT ReadPlainSide(Reader& reader, const Element& element, MfSideT side,
                        Reader::Seen sideRead) {
  reader.side = side;
  if (BtkErrorT e = DispatchAttributes(element, reader, kSideAttributes)) return e;
  if (element.firstChild != nullptr) {
    if (BtkErrorT e = ReadNestedModules(reader, element)) return e;
  } else if (!Given(reader, Reader::kSeenModuleRef)) {
    return kBtkMissing;
  }
  FinishSide(reader, sideRead);
  return kBtkOk;
}

// What a service side holds depends on whether the class is served: offered as a service of its
// own, and not only hosted by another one.
BtkErrorT ReadServiceModule(Reader& reader, const Element& element, bool served) {
  if (element.firstChild != nullptr) {
    return served ? ReadNestedModules(reader, element) : kBtkMissing;
  }
  const bool complete =
      Given(reader, Reader::kSeenModuleRef) ? served : Given(reader, Reader::kSeenXsId);
  return complete ? kBtkOk : kBtkMissing;
}

}  // namespace

BtkErrorT ReadClientSide(Reader& reader, const Element& element) {
  if (Given(reader, Reader::kClientSideRead)) return kBtkDuplicate;
  if (reader.current->affinity == kMfAgentClass) return kBtkForbidden;
  return ReadPlainSide(reader, element, kMfClientSide, Reader::kClientSideRead);
}

BtkErrorT ReadAgentSide(Reader& reader, const Element& element) {
  if (Given(reader, Reader::kAgentSideRead)) return kBtkDuplicate;
  if (reader.current->affinity == kMfAppClass) return kBtkForbidden;
  return ReadPlainSide(reader, element, kMfAgentSide, Reader::kAgentSideRead);
}

BtkErrorT ReadServiceSide(Reader& reader, const Element& element) {
  MfIntfClassT& record = *reader.current;
  if (Given(reader, Reader::kServiceSideRead)) return kBtkDuplicate;
  if (record.affinity != kMfServiceClass) return kBtkForbidden;
  reader.side = kMfServiceSide;
  if (BtkErrorT e = DispatchAttributes(element, reader, kServiceSideAttributes)) return e;
  if (!Given(reader, Reader::kSeenMultiplicity)) {
    record.sides[kMfServiceSide].multiplicity = kMfSingleInstance;
  }

  const bool worker = record.managedtype == kMfWorker;
  const bool served = worker || Given(reader, Reader::kSeenSvcId);
  if (!served && !Given(reader, Reader::kSeenXsId)) return kBtkMissing;
  if (Given(reader, Reader::kSeenIsolation) && !Given(reader, Reader::kSeenXsId)) {
    return kBtkForbidden;
  }
  if (BtkErrorT e = ReadServiceModule(reader, element, served)) return e;

  if (worker && !Given(reader, Reader::kSeenSvcId)) {
    record.ids[kMfServiceSide] = record.ids[kMfClientSide];
  }
  if (Given(reader, Reader::kSeenXsVersion) && !Given(reader, Reader::kSeenXsName)) {
    return kBtkForbidden;
  }
  if (Given(reader, Reader::kSeenXsName) && Given(reader, Reader::kSeenXsId)) return kBtkForbidden;
  FinishSide(reader, Reader::kServiceSideRead);
  return kBtkOk;
}

}  // namespace tarnmf
