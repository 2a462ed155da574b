#include "xml/module_attributes.h"

#include <algorithm>
#include <iterator>

#include "platform/runtime.h"
#include "xml/attributes.h"

namespace tarnmf {
namespace {

using Reader = liMfReader::ModuleReader;

constexpr char kDefaultType[] = "sharedLib";

// The default type is never stored.
struct ModuleType {
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    Utf8Text type;
    if (BtkErrorT e = ReadUtf8(text, type)) return e;
    if (*type == '\0') return kBtkMalformed;
    if (btk_strcasecmp(type.get(), kDefaultType) != 0) reader.module->type = type.release();
    return kBtkOk;
  }
};

// An empty load point means that the module has none.
struct ModuleLoadpoint {
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    WideText loadpoint;
    if (BtkErrorT e = ReadWide(text, loadpoint)) return e;
    if (*loadpoint == 0) return kBtkOk;
    reader.module->loadpoint = loadpoint.release();
    reader.module->flags |= kMfModuleOwnsLoadpoint;
    return kBtkOk;
  }
};

struct AddressBits {
  static BtkErrorT Read(Reader& reader, const XMLCh* text) {
    std::int32_t bits = 0;
    if (BtkErrorT e = ReadDecimal(text, bits)) return e;
    if (bits != 32 && bits != 64) return kBtkMalformed;
    reader.impl->abits = bits;
    return kBtkOk;
  }
};

// Admitted for the version's sake, but its text says nothing.
struct ImplVersion {
  static BtkErrorT Read(Reader& reader, const XMLCh*) {
    std::fill(std::begin(reader.impl->version), std::end(reader.impl->version), 0U);
    return kBtkOk;
  }
};

using ImplName =
    Owned<Wide<&MfModuleImplT::name, EmptyText::kRefused>, &MfModuleImplT::flags, kMfImplOwnsName>;
using ImplPath = Owned<Wide<&MfModuleImplT::path>, &MfModuleImplT::flags, kMfImplOwnsPath>;
using ImplExplicitName = Flag<&MfModuleImplT::flags, kMfImplExplicitName>;
using ImplForcePath = Flag<&MfModuleImplT::flags, kMfImplForcePath>;
using ImplApiLevel = Decimal<&MfModuleImplT::apilevel>;

constexpr MfTagEntryT kModuleRows[] = {
    {"type", Attribute<Reader, ModuleType, Reader::kSeenType>},
    {"id", Attribute<Reader, Utf8<&MfModuleT::id, EmptyText::kRefused>, Reader::kSeenId>},
    {"name", Attribute<Reader, ImplName, Reader::kSeenName>},
    {"explicitname", Attribute<Reader, ImplExplicitName, Reader::kSeenExplicitName>},
    {"loadpoint", Attribute<Reader, ModuleLoadpoint, Reader::kSeenLoadpoint>},
    {"path", Attribute<Reader, ImplPath, Reader::kSeenPath>},
    {"forcepath", Attribute<Reader, ImplForcePath, Reader::kSeenForcePath>},
    {"resolvepath", RefusedAttribute},
    {"description", IgnoredAttribute},
    {"apilevel", Attribute<Reader, ImplApiLevel, Reader::kSeenApiLevel>},
    {"version", Attribute<Reader, ImplVersion, Reader::kSeenVersion>},
    {"private", Attribute<Reader, Flag<&MfModuleT::flags, kMfModulePrivate>, Reader::kSeenPrivate>},
    {"abits", Attribute<Reader, AddressBits, Reader::kSeenABits>},
};

constexpr MfTagEntryT kPlatformModuleRows[] = {
    {"machinetype", Attribute<Reader, Utf8<&MfModuleImplT::machinetype, EmptyText::kRefused>,
                              Reader::kSeenMachineType>},
    {"name", Attribute<Reader, ImplName, Reader::kSeenName>},
    {"explicitname", Attribute<Reader, ImplExplicitName, Reader::kSeenExplicitName>},
    {"path", Attribute<Reader, ImplPath, Reader::kSeenPath>},
    {"forcepath", Attribute<Reader, ImplForcePath, Reader::kSeenForcePath>},
    {"resolvepath", RefusedAttribute},
    {"apilevel", Attribute<Reader, ImplApiLevel, Reader::kSeenApiLevel>},
    {"version", Attribute<Reader, ImplVersion, Reader::kSeenVersion>},
};

constexpr MfTagEntryT kPreloadRows[] = {
    {"by", Attribute<Reader, Keyword<kPreloadBy, &MfPreloadInfoT::by>, Reader::kSeenBy>},
    {"name",
     Attribute<Reader, Wide<&MfPreloadInfoT::name, EmptyText::kRefused>, Reader::kSeenPreloadName>},
    {"svcid", Attribute<Reader, UniqueId<&MfPreloadInfoT::svcid>, Reader::kSeenSvcId>},
    {"optionid", Attribute<Reader, UniqueId<&MfPreloadInfoT::optionid>, Reader::kSeenOptionId>},
};

}  // namespace

constinit const MfTagTableT kModuleAttributes = kModuleRows;
constinit const MfTagTableT kPlatformModuleAttributes = kPlatformModuleRows;
constinit const MfTagTableT kPreloadAttributes = kPreloadRows;

}  // namespace tarnmf
