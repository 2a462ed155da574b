// SPDX-License-Identifier: Apache-2.0
// Load points as a whole: the files that are read, and what is found in them together.
#include <filesystem>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <string>

#include "check/check.h"
#include "check/edited_files.h"
#include "check/paths.h"
#include "tests/check/example.h"
#include "tests/support/case_file.h"
#include "tests/support/documents.h"
#include "tests/support/random_documents.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::check {
namespace {

// What absolute paths, backslashes and programs are called differs there.
constexpr bool kHasDrives = std::filesystem::path::preferred_separator != '/';

std::string Shown(const Place& place) {
  const Position at = place.source->At(place.span.begin);
  return fmt::format("{}:{}:{}", place.source->Path(), at.line, at.column);
}

// A line for each finding, below it one for each related place and suggestion.
std::string Shown(const Report& report) {
  std::string text;
  for (const Finding& finding : report.findings) {
    text += fmt::format("{} {}", Shown(finding.place), Describe(finding.rule).name);
    if (finding.code != kBtkOk) text += fmt::format(" {}", static_cast<int>(finding.code));
    text += fmt::format(": {}\n", finding.message);
    for (const Related& related : finding.related)
      text += fmt::format("  {} {}\n", Shown(related.place), related.message);
    for (const Suggestion& suggestion : finding.suggestions)
      text += fmt::format("  {} {}\n", suggestion.safe ? "safe:" : "offered:", suggestion.title);
  }
  return text.empty() ? "nothing\n" : text;
}

// Ids stand everywhere but in the line of arguments.
std::string ExampleText(const std::string& input) {
  const std::size_t begin = input.starts_with("$ ") ? input.find('\n') : 0;
  return input.substr(0, begin) + test::WithIds(input.substr(begin));
}

TEST(Installations, ShowWhatTheCasesSay) {
  for (const test::FileCase& one : test::ReadCaseFile(TARNMF_CASES "/installations.cases")) {
    if (kHasDrives && one.name.ends_with("[POSIX]")) continue;
    const test::Example example(ExampleText(one.input + "\n"));
    DiskFiles files;
    EXPECT_EQ(Shown(Check(example.Request(), files)), test::WithIds(one.result)) << one.name;
  }
}

TEST(Installations, AgreeWithTheLibraryOnRandomDocuments) {
  test::RandomDocuments documents(3);
  const test::TempDirectory directory;
  for (int round = 0; round < 600; ++round) {
    const std::string pack = fmt::format("{}", round);
    for (int i = 0; i <= round % 3; ++i)
      directory.Write(fmt::format("{}/{}.tmfx", pack, i), documents.Next());
    DiskFiles files;
    const Report report = Check({"", {directory.At(pack)}}, files);
    for (const Finding& finding : report.findings)
      ASSERT_NE(finding.rule, Rule::kLibraryDisagrees) << Shown(report);
  }
}

TEST(Installations, TellOfAProcessWhosePathIsTooLong) {
  if (kHasDrives) GTEST_SKIP() << "files with such paths cannot be made without a special prefix";
  const test::TempDirectory directory;
  for (const std::size_t length : {260U, 261U}) {
    std::string name(99, 'x');
    while (directory.At().size() + 1 + name.size() + 101 < length)
      name += "/" + std::string(99, 'x');
    name += "/" + std::string(length - directory.At().size() - name.size() - 2, 'x');
    const std::string path = directory.At(name);
    directory.Write(name + "/a.tmfx", test::InRoot(""));
    DiskFiles files;
    const std::string shown = Shown(Check({path, {}}, files));
    // Of an installation that is read from below it.
    DiskFiles others;
    directory.Write(name + "/manifests/a.tmfx", test::InRoot(""));
    EXPECT_EQ(Shown(Check({"", {path + "/manifests"}}, others)).find("path-too-long") ==
                  std::string::npos,
              length == 260);
    EXPECT_EQ(shown, length == 260 ? "nothing\n"
                                   : path +
                                         ":1:1 path-too-long: the process has no load point: its "
                                         "path has more than 260 UTF-16 units\n");
  }
}

// By the name that the editor has for it, whatever the case of its letters where that does not count.
TEST(Installations, ListAFileThatIsEditedOnce) {
  const test::TempDirectory directory;
  directory.Write("a.tmfx", "");
  const std::string name = kHasDrives ? "A.TMFX" : "a.tmfx";
  DiskFiles disk;
  EditedFiles files(disk);
  files.Edit(PathIn(directory.At(), name), "");
  EXPECT_EQ(files.ManifestsIn(directory.At()).names, std::vector{name});
}

}  // namespace
}  // namespace tarnmf::check
