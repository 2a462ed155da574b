// SPDX-License-Identifier: Apache-2.0
// "class" and "classes".
#include <memory>
#include <new>

#include "grammar/manifest.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

using ClassReader = liMfReader::ClassReader;
using ClassMfReader = liMfReader::ClassMfReader;

UniIdT& ClassId(MfIntfClassT& record) {
  return record.ids[kMfClientSide];
}

// Containers are services; no class is one.
struct ClassManagedType {
  static BtkErrorT Read(ClassReader& reader, const btkWChar* text) {
    using Any = Keyword<grammar::kManagedTypeWords, &MfIntfClassT::managedtype>;
    if (BtkErrorT e = Any::Read(reader, text)) return e;
    return reader.current->managedtype == kMfContainer ? kBtkForbidden : kBtkOk;
  }
};

constexpr auto kClassAttributes =
    kAttributesOf<ClassReader, grammar::kClass,  //
                  Row<"id", &ClassId, ClassReader::kSeenId>,
                  Row<"affinity", &MfIntfClassT::affinity, ClassReader::kSeenAffinity>,
                  Row<"commonname", &MfIntfClassT::commonname, ClassReader::kSeenCommonName>,
                  Row<"displayname", &MfIntfClassT::displayname, ClassReader::kSeenDisplayName>,
                  Row<"version", &MfIntfClassT::version, ClassReader::kSeenVersion>,
                  UnreadRow<"createon">,
                  SpecialRow<"managedtype", ClassManagedType, ClassReader::kSeenManagedType>>;

constexpr auto kClassChildren =
    kChildrenOf<ClassReader, grammar::kClass, Child<"agentside", &ReadAgentSide>,
                Child<"clientside", &ReadClientSide>, Child<"serviceside", &ReadServiceSide>>;

BtkErrorT ReadClass(ClassMfReader& reader, const Element& element) {
  if (BtkErrorT e = AdmitOneMore(reader)) return e;
  const std::unique_ptr<ClassReader> classReader(
      reader.CreateClassReader(reader.classes, reader.modules));
  if (!classReader) return kBtkNoMemory;
  std::unique_ptr<MfIntfClassT> record(new (std::nothrow) MfIntfClassT);
  if (!record) return kBtkNoMemory;
  classReader->current = record.get();

  if (BtkErrorT e = DispatchAttributes(element, *classReader, kClassAttributes)) return e;
  if (!Given(*classReader, ClassReader::kSeenId)) return kBtkMissing;
  if (Given(*classReader, ClassReader::kSeenDisplayName) &&
      !Given(*classReader, ClassReader::kSeenCommonName)) {
    return kBtkMissing;
  }
  if (BtkErrorT e = DispatchChildren(element, *classReader, kClassChildren)) return e;

  if (!reader.classes->Append(record.get())) return kBtkNoMemory;
  record.release();
  reader.flags |= kReadOne;
  return kBtkOk;
}

constexpr auto kClassesChildren =
    kChildrenOf<ClassMfReader, grammar::kClasses, Child<"class", &ReadClass>>;

BtkErrorT ReadClasses(ClassMfReader& reader, const Element& element) {
  return ReadListElement(reader, element, kClassesChildren);
}

}  // namespace

constinit const ElementTable<ClassMfReader> kDocumentClasses =
    kChildrenOf<ClassMfReader, grammar::kClassManifest, Child<"class", &ReadClass>,
                Child<"classes", &ReadClasses>>;

}  // namespace tarnmf
