#include "xml/module_elements.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>

#include "support/owned.h"
#include "xml/document_rules.h"
#include "xml/implementation_elements.h"
#include "xml/module_attributes.h"

namespace tarnmf {
namespace {

using ModuleReader = liMfReader::ModuleReader;
using ModuleMfReader = liMfReader::ModuleMfReader;

constexpr MfTagEntryT kModuleChildren[] = {
    {"preload", Element<ModuleReader, ReadPreload>},
    {"platformmodule", Element<ModuleReader, ReadPlatformModule>},
};

constexpr std::uint32_t kFirstVersion[4] = {1, 0, 0, 0};

// A module that names no load point lies in the one that it is read for, which the empty text
// stands for until the loader lends its own.
BtkErrorT DefaultPlace(const ModuleReader& reader, MfModuleT& module, MfModuleImplT& impl) {
  if ((reader.flags & ModuleReader::kSeenLoadpoint) != 0) return kBtkOk;
  if ((reader.flags & ModuleReader::kSeenPath) == 0) {
    impl.path = btk_wcsdup(BTK_W(""));
    if (impl.path == nullptr) return kBtkNoMemory;
    impl.flags |= kMfImplOwnsPath;
  }
  module.loadpoint = btk_wcsdup(BTK_W(""));
  if (module.loadpoint == nullptr) return kBtkNoMemory;
  module.flags |= kMfModuleOwnsLoadpoint;
  return kBtkOk;
}

BtkErrorT ReadDocumentModule(ModuleMfReader& reader, DOMNode& element) {
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
  if (own.version[0] == 0)
    std::copy(std::begin(kFirstVersion), std::end(kFirstVersion), own.version);
  reader.flags |= kReadOne;
  return kBtkOk;
}

constexpr MfTagEntryT kModulesChildren[] = {
    {"module", Element<ModuleMfReader, ReadDocumentModule>},
};

BtkErrorT ReadModules(ModuleMfReader& reader, DOMNode& element) {
  return ReadListElement(reader, element, kModulesChildren);
}

constexpr MfTagEntryT kDocumentModuleRows[] = {
    {"module", Element<ModuleMfReader, ReadDocumentModule>},
    {"modules", Element<ModuleMfReader, ReadModules>},
};

}  // namespace

constinit const MfTagTableT kDocumentModules = kDocumentModuleRows;

BtkErrorT ReadModule(ModuleReader& reader, DOMNode& element) {
  std::unique_ptr<MfModuleT> module(new (std::nothrow) MfModuleT);
  std::unique_ptr<MfModuleImplT> own(new (std::nothrow) MfModuleImplT);
  if (!module || !own) return kBtkNoMemory;
  reader.module = module.get();
  reader.impl = own.get();

  if (BtkErrorT e = DispatchAttributes(element, &reader, kModuleAttributes)) return e;
  if ((reader.flags & ModuleReader::kSeenName) == 0) return kBtkMissing;
  if (BtkErrorT e = DefaultPlace(reader, *module, *own)) return e;

  if (!reader.impls.Append(own.get())) return kBtkNoMemory;
  MfModuleImplT* const first = own.release();
  const BtkErrorT childrenResult = DispatchChildren(element, &reader, kModuleChildren);
  reader.preloads[0].HandOver(first->preloads);
  reader.impls.HandOver(module->impls);
  if (childrenResult != kBtkOk) return childrenResult;

  if (!reader.modules->Append(module.get())) return kBtkNoMemory;
  module.release();
  return kBtkOk;
}

}  // namespace tarnmf
