// Reads one input as the layout file of an installation.
#include "repository/layout_file.h"
#include "tests/support/memory_stream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tarnmf::test::MemoryStream stream(std::string(reinterpret_cast<const char*>(bytes), size));
  tarnmf::LayoutFile layout;
  const BtkErrorT result =
      tarnmf::ReadLayoutStream(stream, btkFSEntry("/install/.installed"), layout);
  if (result != kBtkOk && (layout.base || layout.entries.count != 0)) __builtin_trap();
  return 0;
}
