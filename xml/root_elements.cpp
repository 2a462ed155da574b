#include "xml/root_elements.h"

#include <memory>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include "xml/attributes.h"
#include "xml/class_elements.h"
#include "xml/module_elements.h"
#include "xml/runnable_elements.h"

namespace tarnmf {
namespace {

using MfReader = liMfReader::MfReader;

constexpr std::int32_t kSupportedVersion = 1;

struct DocumentVersion {
  static BtkErrorT Read(liMfReader& reader, const XMLCh* text) {
    std::int32_t version = 0;
    if (BtkErrorT e = ReadDecimal(text, version)) return e;
    if (version != kSupportedVersion) return kBtkWrongVersion;
    reader.version = version;
    return kBtkOk;
  }
};

constexpr MfTagEntryT kRootAttributes[] = {
    {"version", Attribute<liMfReader, DocumentVersion, liMfReader::kSeenDocumentVersion>},
};

BtkErrorT ReadVersion(liMfReader& reader, DOMNode& root) {
  const xercesc::DOMNamedNodeMap* attributes = root.getAttributes();
  if (attributes == nullptr || attributes->getLength() != 1) return kBtkUnexpected;
  return DispatchAttributes(root, &reader, kRootAttributes);
}

// The document-level readers, made by the root's reader or, in mixed documents, by that of the
// root's child elements.
struct ClassDocument {
  static constexpr const MfTagTableT& kTable = kDocumentClasses;
  template <class Parent>
  static auto* CreateReader(Parent& parent) {
    return parent.CreateClassMfReader(parent.version, parent.classes, parent.modules);
  }
};
struct ModuleDocument {
  static constexpr const MfTagTableT& kTable = kDocumentModules;
  template <class Parent>
  static auto* CreateReader(Parent& parent) {
    return parent.CreateModuleMfReader(parent.version, parent.modules);
  }
};
struct RunnableDocument {
  static constexpr const MfTagTableT& kTable = kDocumentRunnables;
  template <class Parent>
  static auto* CreateReader(Parent& parent) {
    return parent.CreateRunnableMfReader(parent.version, parent.runnables, parent.modules);
  }
};

// One reader for all children of the root.
template <class Document>
BtkErrorT ReadDocument(liMfReader& reader, DOMNode& root) {
  if (BtkErrorT e = ReadVersion(reader, root)) return e;
  const auto documentReader =
      std::unique_ptr<std::remove_pointer_t<decltype(Document::CreateReader(reader))>>(
          Document::CreateReader(reader));
  if (!documentReader) return kBtkNoMemory;
  return DispatchChildren(root, documentReader.get(), Document::kTable);
}

// A reader for one child of a mixed document.
template <class Document>
BtkErrorT ReadMixedChild(MfReader& reader, DOMNode& child) {
  const auto documentReader =
      std::unique_ptr<std::remove_pointer_t<decltype(Document::CreateReader(reader))>>(
          Document::CreateReader(reader));
  if (!documentReader) return kBtkNoMemory;
  return DispatchNode(child, documentReader.get(), Document::kTable);
}

constexpr MfTagEntryT kMixedChildren[] = {
    {"class", Element<MfReader, ReadMixedChild<ClassDocument>>},
    {"classes", Element<MfReader, ReadMixedChild<ClassDocument>>},
    {"runnable", Element<MfReader, ReadMixedChild<RunnableDocument>>},
    {"runnables", Element<MfReader, ReadMixedChild<RunnableDocument>>},
    {"module", Element<MfReader, ReadMixedChild<ModuleDocument>>},
    {"modules", Element<MfReader, ReadMixedChild<ModuleDocument>>},
};

BtkErrorT ReadMixedDocument(liMfReader& reader, DOMNode& root) {
  if (BtkErrorT e = ReadVersion(reader, root)) return e;
  const std::unique_ptr<MfReader> mixedReader(
      reader.CreateMfReader(reader.version, reader.classes, reader.runnables, reader.modules));
  if (!mixedReader) return kBtkNoMemory;
  return DispatchChildren(root, mixedReader.get(), kMixedChildren);
}

constexpr MfTagEntryT kRootRows[] = {
    {"tarnmanifest", Element<liMfReader, ReadMixedDocument>},
    {"tarnmodulemanifest", Element<liMfReader, ReadDocument<ModuleDocument>>},
    {"tarnclassmanifest", Element<liMfReader, ReadDocument<ClassDocument>>},
    {"tarnrunnablemanifest", Element<liMfReader, ReadDocument<RunnableDocument>>},
};

}  // namespace

constinit const MfTagTableT kRoots = kRootRows;

}  // namespace tarnmf
