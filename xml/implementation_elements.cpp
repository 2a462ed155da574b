#include "xml/implementation_elements.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>

#include "xml/module_attributes.h"

namespace tarnmf {
namespace {

using ModuleReader = liMfReader::ModuleReader;

constexpr MfTagEntryT kPlatformModuleChildren[] = {
    {"preload", Element<ModuleReader, ReadPreload>},
};

BtkErrorT CheckPlatformModule(std::uint32_t seen) {
  const auto given = [seen](std::uint32_t bits) { return (seen & bits) != 0; };
  if (!given(ModuleReader::kSeenMachineType)) return kBtkMissing;
  if (given(ModuleReader::kSeenForcePath) && !given(ModuleReader::kSeenPath)) return kBtkMissing;
  if (given(ModuleReader::kSeenExplicitName) && !given(ModuleReader::kSeenName)) return kBtkMissing;
  return given(ModuleReader::kSeenOfImplementation) ? kBtkOk : kBtkMissing;
}

// Takes over from the module's own implementation what this one did not give. Texts are borrowed:
// both end with the same module.
void Inherit(MfModuleImplT& impl, const MfModuleImplT& own, std::uint32_t seen) {
  if ((seen & ModuleReader::kSeenName) == 0) {
    impl.name = own.name;
    impl.flags |= own.flags & kMfImplExplicitName;
  }
  if ((seen & ModuleReader::kSeenPath) == 0) {
    impl.path = own.path;
    impl.flags |= own.flags & kMfImplForcePath;
  }
  if ((seen & ModuleReader::kSeenApiLevel) == 0) impl.apilevel = own.apilevel;
  if ((seen & ModuleReader::kSeenVersion) == 0) {
    std::copy(std::begin(own.version), std::end(own.version), impl.version);
  }
}

// Without "by", what else was given says who triggers the preload.
MfPreloadByT ImpliedBy(std::uint32_t seen) {
  if ((seen & ModuleReader::kSeenSvcId) != 0) return kMfByService;
  if ((seen & ModuleReader::kSeenPreloadName) != 0) return kMfByExecutable;
  return kMfByNone;
}

BtkErrorT CheckPreload(MfPreloadByT by, std::uint32_t seen) {
  const bool hasName = (seen & ModuleReader::kSeenPreloadName) != 0;
  const bool hasSvcId = (seen & ModuleReader::kSeenSvcId) != 0;
  if (by == kMfByAnyone && (hasName || hasSvcId)) return kBtkMissing;
  if (by == kMfByClient && hasSvcId) return kBtkMissing;
  if (by == kMfByExecutable && !hasName) return kBtkMissing;
  return kBtkOk;
}

bool HasChildElement(DOMNode& element) {
  for (DOMNode* child = element.getFirstChild(); child != nullptr;
       child = child->getNextSibling()) {
    if (child->getNodeType() == DOMNode::ELEMENT_NODE) return true;
  }
  return false;
}

}  // namespace

BtkErrorT ReadPlatformModule(ModuleReader& reader, DOMNode& element) {
  std::unique_ptr<MfModuleImplT> impl(new (std::nothrow) MfModuleImplT);
  if (!impl) return kBtkNoMemory;
  reader.impl = impl.get();
  reader.flags &= ~(ModuleReader::kSeenOfImplementation | ModuleReader::kSeenMachineType |
                    ModuleReader::kSeenOfPreload);

  if (BtkErrorT e = DispatchAttributes(element, &reader, kPlatformModuleAttributes)) return e;
  const std::uint32_t seen = reader.flags;
  if (BtkErrorT e = CheckPlatformModule(seen)) return e;

  reader.inPlatformModule = true;
  const BtkErrorT childrenResult = DispatchChildren(element, &reader, kPlatformModuleChildren);
  reader.inPlatformModule = false;
  if (childrenResult != kBtkOk) return childrenResult;

  reader.preloads[1].HandOver(impl->preloads);
  Inherit(*impl, *reader.impls[0], seen);
  if (!reader.impls.Append(impl.get())) return kBtkNoMemory;
  impl.release();
  return kBtkOk;
}

BtkErrorT ReadPreload(ModuleReader& reader, DOMNode& element) {
  std::unique_ptr<MfPreloadInfoT> preload(new (std::nothrow) MfPreloadInfoT);
  if (!preload) return kBtkNoMemory;
  reader.preload = preload.get();
  reader.flags &= ~ModuleReader::kSeenOfPreload;

  if (BtkErrorT e = DispatchAttributes(element, &reader, kPreloadAttributes)) return e;
  if (preload->by == kMfByNone) preload->by = ImpliedBy(reader.flags);
  if (BtkErrorT e = CheckPreload(preload->by, reader.flags)) return e;
  if (HasChildElement(element)) return kBtkUnexpected;

  if (!reader.preloads[reader.inPlatformModule ? 1 : 0].Append(preload.get())) return kBtkNoMemory;
  preload.release();
  return kBtkOk;
}

}  // namespace tarnmf
