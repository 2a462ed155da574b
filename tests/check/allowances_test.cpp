// SPDX-License-Identifier: Apache-2.0
#include "check/allowances.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <string>

#include "check/verdict.h"
#include "tests/check/example.h"
#include "tests/support/case_file.h"

namespace tarnmf::check {
namespace {

std::string Shown(const Finding& finding) {
  const Position at = finding.place.source->At(finding.place.span.begin);
  return fmt::format("{}:{} {}", at.line, at.column, Describe(finding.rule).name);
}

// Of an installation with one file of interest.
std::string Judged(const std::string& text) {
  constexpr char kGood[] = "<tarnmanifest version=\"1\"/>";
  const test::Example example(
      fmt::format("$ --loadpoint process pack\n== process/a.tmfx\n{}\n== pack/other.tmfx\n{}\n"
                  "== pack/{}\n{}",
                  kGood, kGood, text.starts_with('<') ? "a.tmfx" : ".installed", text));
  DiskFiles files;
  SettingsFinder settings(files);
  Report report = Check(example.Request(), files);
  const Verdict verdict = Judge(report, settings, Levels());
  std::string shown;
  for (const Finding& finding : verdict.findings)
    shown += Shown(finding) + "\n";
  for (const AllowedFinding& allowed : verdict.allowed)
    shown += fmt::format("({}: {})\n", Shown(allowed.finding), allowed.reason);
  return shown;
}

TEST(Allowances, CoverWhatTheCasesSay) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/allowances.cases"))
    EXPECT_EQ(Judged(one.input), one.result) << one.name;
}

}  // namespace
}  // namespace tarnmf::check
