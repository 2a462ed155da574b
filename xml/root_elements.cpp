// SPDX-License-Identifier: Apache-2.0
// The root elements.
#include <memory>

#include "grammar/manifest.h"
#include "xml/elements.h"
#include "xml/rows.h"

namespace tarnmf {
namespace {

using MfReader = liMfReader::MfReader;

constexpr std::int32_t kSupportedVersion = 1;

struct DocumentVersion {
  static BtkErrorT Read(liMfReader& reader, const btkWChar* text) {
    std::int32_t version = 0;
    if (BtkErrorT e = ReadDecimal(text, version)) return e;
    if (version != kSupportedVersion) return kBtkWrongVersion;
    reader.version = version;
    return kBtkOk;
  }
};

static_assert(
    grammar::kModuleManifest.attributes.data() == grammar::kMixedManifest.attributes.data() &&
    grammar::kClassManifest.attributes.data() == grammar::kMixedManifest.attributes.data() &&
    grammar::kRunnableManifest.attributes.data() == grammar::kMixedManifest.attributes.data());
constexpr auto kRootAttributes =
    kAttributesOf<liMfReader, grammar::kMixedManifest,
                  SpecialRow<"version", DocumentVersion, liMfReader::kSeenDocumentVersion>>;

BtkErrorT ReadVersion(liMfReader& reader, const Element& root) {
  if (root.attributes.size() != 1) return kBtkUnexpected;
  return DispatchAttributes(root, reader, kRootAttributes);
}

// The document-level readers, made by the root's reader or, in mixed documents, by that of the
// root's child elements. Null: out of memory.
struct ClassDocument {
  static constexpr const auto& kTable = kDocumentClasses;
  template <class Parent>
  static auto CreateReader(Parent& parent) {
    return std::unique_ptr<liMfReader::ClassMfReader>(
        parent.CreateClassMfReader(parent.version, parent.classes, parent.modules));
  }
};
struct ModuleDocument {
  static constexpr const auto& kTable = kDocumentModules;
  template <class Parent>
  static auto CreateReader(Parent& parent) {
    return std::unique_ptr<liMfReader::ModuleMfReader>(
        parent.CreateModuleMfReader(parent.version, parent.modules));
  }
};
struct RunnableDocument {
  static constexpr const auto& kTable = kDocumentRunnables;
  template <class Parent>
  static auto CreateReader(Parent& parent) {
    return std::unique_ptr<liMfReader::RunnableMfReader>(
        parent.CreateRunnableMfReader(parent.version, parent.runnables, parent.modules));
  }
};

// One reader for all children of the root.
template <class Document>
BtkErrorT ReadDocument(liMfReader& reader, const Element& root) {
  if (BtkErrorT e = ReadVersion(reader, root)) return e;
  const auto documentReader = Document::CreateReader(reader);
  if (!documentReader) return kBtkNoMemory;
  return DispatchChildren(root, *documentReader, Document::kTable);
}

// A reader for one child of a mixed document.
template <class Document>
BtkErrorT ReadMixedChild(MfReader& reader, const Element& child) {
  const auto documentReader = Document::CreateReader(reader);
  if (!documentReader) return kBtkNoMemory;
  return DispatchElement(child, *documentReader, Document::kTable);
}

constexpr auto kMixedChildren = kChildrenOf<MfReader, grammar::kMixedManifest,  //
                                            Child<"class", &ReadMixedChild<ClassDocument>>,
                                            Child<"classes", &ReadMixedChild<ClassDocument>>,
                                            Child<"runnable", &ReadMixedChild<RunnableDocument>>,
                                            Child<"runnables", &ReadMixedChild<RunnableDocument>>,
                                            Child<"module", &ReadMixedChild<ModuleDocument>>,
                                            Child<"modules", &ReadMixedChild<ModuleDocument>>>;

BtkErrorT ReadMixedDocument(liMfReader& reader, const Element& root) {
  if (BtkErrorT e = ReadVersion(reader, root)) return e;
  const std::unique_ptr<MfReader> mixedReader(
      reader.CreateMfReader(reader.version, reader.classes, reader.runnables, reader.modules));
  if (!mixedReader) return kBtkNoMemory;
  return DispatchChildren(root, *mixedReader, kMixedChildren);
}

}  // namespace

constinit const ElementTable<liMfReader> kRoots =
    kChildrenOf<liMfReader, grammar::kDocument,  //
                Child<"tarnmanifest", &ReadMixedDocument>,
                Child<"tarnmodulemanifest", &ReadDocument<ModuleDocument>>,
                Child<"tarnclassmanifest", &ReadDocument<ClassDocument>>,
                Child<"tarnrunnablemanifest", &ReadDocument<RunnableDocument>>>;

}  // namespace tarnmf
