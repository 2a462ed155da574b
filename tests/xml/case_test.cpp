// SPDX-License-Identifier: Apache-2.0
// The documents of the case files, each with the code or the records that come of it.
#include <gtest/gtest.h>
#include <sstream>

#include "tests/support/documents.h"
#include "tests/support/parse.h"

namespace tarnmf::test {
namespace {

// A dump with its lines, or what a case file says of them, in one line; "nothing" for no records.
std::string OneLine(const std::string& dump) {
  std::string joined;
  std::istringstream lines(dump);
  for (std::string line; std::getline(lines, line);) {
    line.erase(0, line.find_first_not_of(' '));
    if (!line.empty()) joined += (joined.empty() ? "" : " / ") + line;
  }
  return joined.empty() ? "nothing" : joined;
}

TEST(Cases, AreReadAsTheySay) {
  for (const FileCase& one : ReadDocumentCases(TARNMF_CASES))
    EXPECT_EQ(OneLine(ParseAndDump(one.input)), OneLine(one.result)) << one.name << "\n"
                                                                     << one.input;
}

}  // namespace
}  // namespace tarnmf::test
