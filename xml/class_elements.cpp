#include "xml/class_elements.h"

#include <memory>
#include <new>

#include "xml/attributes.h"
#include "xml/document_rules.h"
#include "xml/side_elements.h"

namespace tarnmf {
namespace {

using ClassReader = liMfReader::ClassReader;
using ClassMfReader = liMfReader::ClassMfReader;

UniIdT& ClassId(MfIntfClassT& record) {
  return record.ids[kMfClientSide];
}

// Containers are services; no class is one.
struct ClassManagedType {
  static BtkErrorT Read(ClassReader& reader, const XMLCh* text) {
    using Any = Keyword<kManagedType, &MfIntfClassT::managedtype>;
    if (BtkErrorT e = Any::Read(reader, text)) return e;
    return reader.current->managedtype == kMfContainer ? kBtkForbidden : kBtkOk;
  }
};

constexpr MfTagEntryT kClassAttributes[] = {
    {"id", Attribute<ClassReader, UniqueId<&ClassId>, ClassReader::kSeenId>},
    {"affinity", Attribute<ClassReader, Keyword<kAffinity, &MfIntfClassT::affinity>,
                           ClassReader::kSeenAffinity>},
    {"commonname",
     Attribute<ClassReader, Utf8<&MfIntfClassT::commonname>, ClassReader::kSeenCommonName>},
    {"displayname",
     Attribute<ClassReader, Utf8<&MfIntfClassT::displayname>, ClassReader::kSeenDisplayName>},
    {"version",
     Attribute<ClassReader, Decimal16<&MfIntfClassT::version>, ClassReader::kSeenVersion>},
    {"createon", IgnoredAttribute},
    {"managedtype", Attribute<ClassReader, ClassManagedType, ClassReader::kSeenManagedType>},
};

constexpr MfTagEntryT kClassChildren[] = {
    {"agentside", Element<ClassReader, ReadAgentSide>},
    {"clientside", Element<ClassReader, ReadClientSide>},
    {"serviceside", Element<ClassReader, ReadServiceSide>},
};

BtkErrorT ReadClass(ClassMfReader& reader, DOMNode& element) {
  if (BtkErrorT e = AdmitOneMore(reader)) return e;
  const std::unique_ptr<ClassReader> classReader(
      reader.CreateClassReader(reader.classes, reader.modules));
  if (!classReader) return kBtkNoMemory;
  std::unique_ptr<MfIntfClassT> record(new (std::nothrow) MfIntfClassT);
  if (!record) return kBtkNoMemory;
  classReader->current = record.get();

  if (BtkErrorT e = DispatchAttributes(element, classReader.get(), kClassAttributes)) return e;
  const std::uint32_t seen = classReader->flags;
  if ((seen & ClassReader::kSeenId) == 0) return kBtkMissing;
  if ((seen & ClassReader::kSeenDisplayName) != 0 && (seen & ClassReader::kSeenCommonName) == 0) {
    return kBtkMissing;
  }
  if (BtkErrorT e = DispatchChildren(element, classReader.get(), kClassChildren)) return e;

  if (!reader.classes->Append(record.get())) return kBtkNoMemory;
  record.release();
  reader.flags |= kReadOne;
  return kBtkOk;
}

constexpr MfTagEntryT kClassesChildren[] = {
    {"class", Element<ClassMfReader, ReadClass>},
};

BtkErrorT ReadClasses(ClassMfReader& reader, DOMNode& element) {
  return ReadListElement(reader, element, kClassesChildren);
}

constexpr MfTagEntryT kDocumentClassRows[] = {
    {"class", Element<ClassMfReader, ReadClass>},
    {"classes", Element<ClassMfReader, ReadClasses>},
};

}  // namespace

constinit const MfTagTableT kDocumentClasses = kDocumentClassRows;

}  // namespace tarnmf
