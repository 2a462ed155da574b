// Parses documents of tests and shows what came of them.
#ifndef TESTS_XML_PARSE_H
#define TESTS_XML_PARSE_H

#include <gtest/gtest.h>
#include <string>

#include "tarnmf/dispose.h"
#include "tarnmf/stream_parser.h"

#include "support/ignore_refusal.h"
#include "support/owned.h"
#include "tests/support/allocation_fault.h"
#include "tests/support/documents.h"
#include "tests/support/memory_stream.h"
#include "tests/support/record_dump.h"

namespace tarnmf::test {

struct Case {
  const char* name;
  const char* fragment;  // below the root of a mixed document; "$1" to "$9" stand for ids
  BtkErrorT code;
  const char* dump;  // of what was read
};

inline BtkErrorT Parse(const std::string& document, MfLdpDataT& data) {
  const DisposePtr<liMfStmParser> parser(liMfStmParser::CreateNew(nullptr));
  MemoryStream stream(document);
  const BtkErrorT code = parser->Parse(&data, &stream);
  EXPECT_EQ(stream.References(), 1);
  EXPECT_FALSE(stream.Closed());
  return code;
}

inline bool IsEmpty(const MfLdpDataT& data) {
  const auto isEmpty = [](const auto& list) { return list.items == nullptr && list.count == 0; };
  return isEmpty(data.classes) && isEmpty(data.modules) && isEmpty(data.runnables);
}

// Parses a document that has been parsed before, so that the XML library has made what it keeps.
inline void ExpectNothingLeft(const std::string& document) {
  const std::int64_t before = LiveAllocations();
  {
    MfLdpDataT data;
    IgnoreRefusal(Parse(document, data));
  }
  EXPECT_EQ(LiveAllocations(), before);
}

// The code of parsing one document, with the dump behind it when all went well.
inline std::string ParseAndDump(const std::string& document) {
  std::string result;
  {
    MfLdpDataT data;
    const BtkErrorT code = Parse(document, data);
    EXPECT_TRUE(code == kBtkOk || IsEmpty(data));
    result = code == kBtkOk ? "0\n" + Dump(data) : std::to_string(code);
  }
  ExpectNothingLeft(document);
  return result;
}

template <std::size_t N>
void ExpectAll(const Case (&cases)[N]) {
  for (const Case& row : cases) {
    SCOPED_TRACE(row.name);
    const std::string expected =
        row.code == kBtkOk ? "0\n" + WithIds(row.dump) : std::to_string(row.code);
    EXPECT_EQ(ParseAndDump(InRoot(WithIds(row.fragment))), expected);
  }
}

}  // namespace tarnmf::test

#endif  // TESTS_XML_PARSE_H
