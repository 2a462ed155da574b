// The examples of the catalogue are what they claim to be.
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

#include "check/check.h"
#include "check/verdict.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::check {
namespace {

// The files of one example, in the working directory while it lives.
class Example {
 public:
  explicit Example(std::string_view text) : home_(std::filesystem::current_path()) {
    std::filesystem::current_path(directory_.Path());
    request_.paths = {"pack"};
    std::istringstream lines{std::string(text.substr(text.starts_with('\n') ? 1 : 0))};
    std::string path;
    std::string content;
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("$ ")) {
        ReadArguments(line.substr(2));
      } else if (line.starts_with("== ")) {
        if (!path.empty()) directory_.Write(path, content);
        path = line.substr(3);
        content.clear();
      } else {
        content += line;
        // What ends without a line feed in the example does so in the file.
        if (!lines.eof()) content += '\n';
      }
    }
    directory_.Write(path.empty() ? "pack/example.tmfx" : path,
                     path.empty() ? WithRoot(content) : content);
  }
  ~Example() { std::filesystem::current_path(home_); }

  std::string RulesFound(Rule passedOver) const {
    DiskFiles files;
    SettingsFinder settings(files);
    const Report report = Check(request_, files);
    const Verdict verdict = Judge(report, settings, Levels());
    std::string rules;
    for (const Finding& finding : verdict.findings) {
      const std::string name = Describe(finding.rule).name;
      if (finding.rule == passedOver || rules == name) continue;
      rules += (rules.empty() ? "" : " ") + name;
    }
    return rules;
  }

 private:
  static std::string WithRoot(const std::string& content) {
    const bool hasRoot =
        content.find("<tarn") != content.npos || content.find("<?xml") != content.npos;
    return hasRoot ? content : "<tarnmanifest version=\"1\">\n" + content + "</tarnmanifest>\n";
  }

  void ReadArguments(const std::string& text) {
    request_.paths.clear();
    std::istringstream words(text);
    for (std::string word; words >> word;) {
      if (word == "--loadpoint") {
        words >> request_.loadpoint;
      } else {
        request_.paths.push_back(word);
      }
    }
  }

  const std::filesystem::path home_;
  const test::TempDirectory directory_;
  Request request_;
};

TEST(Catalogue, ExamplesBreakTheirRuleAlone) {
  for (const RuleT& rule : Catalogue()) {
    SCOPED_TRACE(rule.name);
    EXPECT_STRNE(rule.advice, "");
    EXPECT_EQ(rule.wrong == nullptr, rule.right == nullptr);
    if (rule.wrong == nullptr || rule.right == nullptr) continue;
    // Examples have no libraries.
    const Rule passedOver =
        rule.rule == Rule::kFileMissing ? Rule::kLibraryDisagrees : Rule::kFileMissing;
    EXPECT_EQ(Example(rule.wrong).RulesFound(passedOver), rule.name);
    EXPECT_EQ(Example(rule.right).RulesFound(passedOver), "");
  }
}

}  // namespace
}  // namespace tarnmf::check
