// SPDX-License-Identifier: Apache-2.0
#include "xml/xml_parser.h"

#include <new>

#include "xml/document_parser.h"
#include "xml/elements.h"
#include "xml/readers.h"
#include "xml/xml_input_source.h"
#include "xml/xml_platform.h"

namespace tarnmf {
namespace {

// The lists of a container while a document is added to them. What they hold is destroyed with this
// object unless it is handed back, so that a failed parse keeps nothing.
class WorkingLists {
 public:
  explicit WorkingLists(MfLdpDataT& data) : data_(data) {
    classes.Adopt(data.classes);
    modules.Adopt(data.modules);
    runnables.Adopt(data.runnables);
  }

  // All three or, when the platform throws, none.
  void HandBack() {
    classes.Fit();
    modules.Fit();
    runnables.Fit();
    classes.HandOverFitted(data_.classes);
    modules.HandOverFitted(data_.modules);
    runnables.HandOverFitted(data_.runnables);
  }

  ClassList classes;
  ModuleList modules;
  RunnableList runnables;

 private:
  MfLdpDataT& data_;
};

BtkErrorT ReadDocument(DocumentParser& parser, WorkingLists& lists) {
  if (!parser.HasDocument()) return kBtkMalformed;
  const Element* const root = parser.Root();
  if (root == nullptr) return kBtkUnexpected;
  liMfReader reader(lists.classes, lists.modules, lists.runnables);
  return DispatchElement(*root, reader, kRoots);
}

}  // namespace

BtkErrorT liMfXMLParser::Parse(MfLdpDataT* data, btkIStream* stream) {
  if (data == nullptr || stream == nullptr) return kBtkNullArgument;
  WorkingLists lists(*data);
  btkXMLInputSource source(stream);
  DocumentParser parser;
  parser.parse(source);
  const BtkErrorT result = ReadDocument(parser, lists);
  if (result == kBtkOk) lists.HandBack();
  return result;
}

}  // namespace tarnmf

liMfStmParser* liMfStmParser::CreateNew(const char* /*kind*/) {
  tarnmf::EnsureFactoryUse();
  return new (std::nothrow) tarnmf::liMfXMLParser;
}

void liMfStmParser::Dispose() {
  delete this;
}

liMfStmParser::~liMfStmParser() = default;
