// SPDX-License-Identifier: Apache-2.0
// Parses one input as a manifest document.
#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "fuzz/harness.h"
#include "tests/support/memory_stream.h"

using tarnmf::fuzz::Require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const tarnmf::DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  tarnmf::test::MemoryStream stream(tarnmf::fuzz::TextOf(bytes, size));
  MfLdpDataT data;
  const BtkErrorT result =
      tarnmf::fuzz::WithoutXmlExceptions([&] { return parser->Parse(&data, &stream); });
  const bool empty = data.classes.count + data.modules.count + data.runnables.count == 0;
  Require(result == kBtkOk || empty);
  Require(stream.References() == 1);
  return 0;
}
