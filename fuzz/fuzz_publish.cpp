// SPDX-License-Identifier: Apache-2.0
// Parses one input as a manifest document and publishes what it declares.
#include "tarnmf/dispose.h"
#include "tarnmf/publisher.h"
#include "tarnmf/stream_parser.h"

#include "fuzz/harness.h"
#include "support/owned.h"
#include "tests/support/memory_stream.h"

using tarnmf::fuzz::Require;

namespace {

BtkErrorT AddAll(liMfPublisher& publisher, const MfLdpDataT& data) {
  return publisher.Add(data.classes.items, data.classes.count, data.modules.items,
                       data.modules.count, data.runnables.items, data.runnables.count);
}

void Publish(const MfLdpDataT& data, IntfDispositionT view) {
  const tarnmf::fuzz::FreshManagers managers;
  tarnmf::DisposePtr<liMfPublisher> publisher;
  Require(liMfPublisher::CreateNew(tarnmf::Out(publisher), view) == kBtkOk);
  const BtkErrorT added = AddAll(*publisher, data);
  const BtkErrorT published = publisher->Publish(true);
  if (added != kBtkOk) {
    Require(published == kBtkOk);
    Require(managers.dlm.Resolutions().empty() && managers.dlm.InterfaceRefs().empty() &&
            managers.dlm.Runnables().empty() && managers.services.Services().empty());
  } else if (data.modules.count > 0) {
    Require(AddAll(*publisher, data) == kBtkUnexpected);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const tarnmf::DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  tarnmf::test::MemoryStream stream(tarnmf::fuzz::TextOf(bytes, size));
  MfLdpDataT data;
  const BtkErrorT parsed =
      tarnmf::fuzz::WithoutXmlExceptions([&] { return parser->Parse(&data, &stream); });
  // Publishing writes into the records, so one input serves one view.
  if (parsed == kBtkOk) Publish(data, size % 2 == 0 ? kIntfAgentView : kIntfClientView);
  return 0;
}
