// Parses one input as a manifest document.
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "support/owned.h"
#include "tests/support/memory_stream.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const tarnmf::DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  tarnmf::test::MemoryStream stream(std::string(reinterpret_cast<const char*>(bytes), size));
  MfLdpDataT data;
  BtkErrorT result = kBtkMalformed;
  try {
    result = parser->Parse(&data, &stream);
  } catch (const xercesc::XMLException&) {
  } catch (const xercesc::DOMException&) {
  } catch (const xercesc::OutOfMemoryException&) {
  }
  const bool empty = data.classes.count + data.modules.count + data.runnables.count == 0;
  if (result != kBtkOk && !empty) __builtin_trap();
  if (stream.References() != 1) __builtin_trap();
  return 0;
}
