// SPDX-License-Identifier: Apache-2.0
// Reads one input as the layout file of an installation.
#include "fuzz/harness.h"
#include "repository/layout_file.h"
#include "tests/support/memory_stream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tarnmf::test::MemoryStream stream(tarnmf::fuzz::TextOf(bytes, size));
  tarnmf::LayoutFile layout;
  const BtkErrorT result =
      tarnmf::ReadLayoutStream(stream, btkFSEntry("/install/.installed"), layout);
  tarnmf::fuzz::Require(result == kBtkOk || (!layout.base && layout.entries.count == 0));
  return 0;
}
