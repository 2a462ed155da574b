// SPDX-License-Identifier: Apache-2.0
// Layout files, with the library's reader as the measure.
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "check/layout_file.h"
#include "repository/layout_file.h"
#include "tests/check/marked.h"
#include "tests/support/case_file.h"
#include "tests/support/memory_stream.h"

namespace tarnmf::check {
namespace {

std::unique_ptr<LayoutFileText> Read(const std::string& text) {
  return ReadLayout(".installed", "/i/d", text);
}

TEST(LayoutText, FindsWhatTheCasesSay) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/layouts.cases")) {
    const auto layout = Read(test::Unmarked(one.input));
    EXPECT_EQ(test::Marked(layout->source, layout->findings), one.result + " <= " + one.input)
        << one.name;
  }
}

TEST(LayoutText, SaysWhatIsWrong) {
  const auto said = [](const std::string& text) {
    const auto layout = Read(text);
    return layout->findings.empty() ? "" : layout->findings.front().message;
  };
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/layout_messages.cases"))
    EXPECT_EQ(said(one.input), one.result) << one.name;
  EXPECT_EQ(
      said(std::string(2040, '\n') + "bits = 64\nbits = 32\n"),
      "the statement must end within a block of 2048 bytes of the file, and crosses byte 2048");
}

// ---- The library as the measure ----------------------------------------------------------------

void ExpectAgreement(const std::string& text, const std::string& name) {
  test::MemoryStream stream(text);
  LayoutFile read;
  const BtkErrorT code = ReadLayoutStream(stream, btkFSEntry("/i/d/.installed"), read);
  const auto layout = Read(text);
  ASSERT_EQ(layout->isRefused, code != kBtkOk) << name << "\n" << text;
  if (code == kBtkOk) {
    ASSERT_EQ(layout->basePath, btkFSPath(read.base.get()).NarrowText()) << text;
    ASSERT_EQ(layout->bits, read.bits) << text;
    ASSERT_TRUE(btkUniIdIsEqual(&layout->scope, &read.scope)) << text;
    return;
  }
  for (const Finding& finding : layout->findings) {
    if (finding.severity == Severity::kError && finding.code == code) return;
  }
  FAIL() << code << " is not among the errors of " << name << "\n" << text;
}

TEST(LayoutText, AgreesWithTheLibraryOnDamagedTexts) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t count) { return random() % count; };
  const auto cases = test::ReadCaseFile(TARNMF_LAYOUT_CASES);
  for (const test::FileCase& one : cases)
    ExpectAgreement(one.input, one.name);
  const std::string pieces = "\"\"\"{}||,,==++\n\n\n  \t\r#\xC3\xA4\xE4x9-" + std::string(1, '\0');
  int refused = 0;
  for (int round = 0; round < 20000 && !HasFatalFailure(); ++round) {
    std::string text;
    for (std::size_t i = below(4); i < 4; ++i)
      text += cases[below(cases.size())].input;
    // Some begin shortly before the end of a block.
    if (below(4) == 0) text.insert(0, std::string(2040 - below(60), '\n'));
    for (std::size_t i = below(4); i > 0 && !text.empty(); --i) {
      const std::size_t at = below(text.size());
      text.replace(at, below(2), 1, pieces[below(pieces.size())]);
    }
    if (below(4) == 0) text.resize(below(text.size() + 1));
    ExpectAgreement(text, "round " + std::to_string(round));
    refused += Read(text)->isRefused ? 1 : 0;
  }
  EXPECT_GT(refused, 2000);
  EXPECT_LT(refused, 18000);
}

}  // namespace
}  // namespace tarnmf::check
