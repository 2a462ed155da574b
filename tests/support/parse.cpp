// SPDX-License-Identifier: Apache-2.0
#include "tests/support/parse.h"

#include <gtest/gtest.h>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "support/ignore_refusal.h"
#include "tests/support/fault.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {

BtkErrorT Parse(const std::string& document, MfLdpDataT& data) {
  MemoryStream stream(document);
  return Parse(stream, data);
}

BtkErrorT Parse(MemoryStream& stream, MfLdpDataT& data) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  const BtkErrorT code = parser->Parse(&data, &stream);
  EXPECT_EQ(stream.References(), 1);
  EXPECT_FALSE(stream.Closed());
  EXPECT_TRUE(code == kBtkOk || IsEmpty(data));
  return code;
}

bool IsEmpty(const MfLdpDataT& data) {
  const auto isEmpty = [](const auto& list) { return list.items == nullptr && list.count == 0; };
  return isEmpty(data.classes) && isEmpty(data.modules) && isEmpty(data.runnables);
}

std::string ParseAndDump(const std::string& document) {
  std::string result;
  {
    MfLdpDataT data;
    const BtkErrorT code = Parse(document, data);
    result = code == kBtkOk ? Dump(data) : std::to_string(code);
  }
  const LeakCheck check;
  MfLdpDataT data;
  IgnoreRefusal(Parse(document, data));
  return result;
}

}  // namespace tarnmf::test
