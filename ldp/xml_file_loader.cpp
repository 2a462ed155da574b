// SPDX-License-Identifier: Apache-2.0
#include "ldp/xml_file_loader.h"

#include <memory>
#include <new>

#include "tarnmf/dispose.h"

#include "support/owned.h"
#include "xml/xml_parser.h"
#include "xml/xml_platform.h"

namespace tarnmf {
namespace {

bool IsPresentButEmpty(const btkWChar* text) {
  return text != nullptr && *text == 0;
}

// Records that name no load point of their own borrow this one. The records only read what they
// borrow.
template <class Record>
void Lend(const btkWChar* loadpoint, const MfListT<Record>& records, std::uint32_t ownedBit) {
  for (Record* record : records) {
    if (!IsPresentButEmpty(record->loadpoint)) continue;
    if ((record->flags & ownedBit) != 0) btkStrFree(record->loadpoint);
    record->loadpoint = const_cast<btkWChar*>(loadpoint);
    record->flags &= ~ownedBit;
  }
}

}  // namespace

BtkErrorT liLdpMfXMLFileLoader::Load(MfLdpDataT* data, const btkWChar* loadpoint,
                                     const btkFSList& files) {
  if (data == nullptr) return kBtkNullArgument;
  const unsigned count = files.Count();
  for (unsigned index = 0; index < count; ++index) {
    if (BtkErrorT e = LoadFile(*data, files[index])) return e;
  }
  if (loadpoint == nullptr || *loadpoint == 0) return kBtkOk;
  Lend(loadpoint, data->modules, kMfModuleOwnsLoadpoint);
  Lend(loadpoint, data->runnables, kMfRunnableOwnsLoadpoint);
  return kBtkOk;
}

BtkErrorT liLdpMfXMLFileLoader::LoadFile(MfLdpDataT& data, const btkFSEntry& file) {
  const auto stream = RefPtr<btkIStream>::Adopt(OpenStream(file.Path().WideText()));
  if (!stream) return kBtkMissing;
  const DisposePtr<liMfStmParser> parser(CreateParser());
  if (!parser) return kBtkNoMemory;
  return parser->Parse(&data, stream.get());
}

liMfStmParser* liLdpMfXMLFileLoader::CreateParser() {
  return new (std::nothrow) liMfXMLParser;
}

btkIStream* liLdpMfXMLFileLoader::OpenStream(const btkWChar* path) {
  std::unique_ptr<btkFileStream> stream(new (std::nothrow) btkFileStream);
  if (!stream) return nullptr;
  const btkFSPath file(path);
  if (stream->Open(file.NarrowText(), kBtkOpenRead, btkGetAsciiSerializer()) != kBtkOk) {
    return nullptr;
  }
  stream->AddRef();
  return stream.release();
}

}  // namespace tarnmf

liLdpMfLoader* liLdpMfLoader::CreateNew(const char* /*kind*/) {
  tarnmf::EnsureFactoryUse();
  return new (std::nothrow) tarnmf::liLdpMfXMLFileLoader;
}

void liLdpMfLoader::Dispose() {
  delete this;
}

liLdpMfLoader::~liLdpMfLoader() = default;
