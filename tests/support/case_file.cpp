// SPDX-License-Identifier: Apache-2.0
#include "tests/support/case_file.h"

#include <fstream>
#include <stdexcept>

#include "tests/support/system_names.h"

namespace tarnmf::test {
namespace {

constexpr std::string_view kHeading = "=== ";
constexpr std::string_view kResultLine = "---";
constexpr std::string_view kShortMark = " <= ";

class CaseReader {
 public:
  explicit CaseReader(const std::filesystem::path& path)
      : path_(path), file_(path, std::ios::binary) {
    if (!file_) Refuse("the file cannot be read");
  }

  std::vector<FileCase> Read() {
    bool more = NextLine();
    while (more) {
      if (text_.empty() || text_[0] == '#') {
        more = NextLine();
      } else if (text_.starts_with(kHeading)) {
        more = ReadLong();
      } else {
        ReadShort();
        more = NextLine();
      }
    }
    if (cases_.empty()) Refuse("no case");
    return std::move(cases_);
  }

 private:
  [[noreturn]] void Refuse(const std::string& why) const {
    throw std::runtime_error(Place() + ": " + why);
  }
  std::string Place() const { return path_.filename().string() + ":" + std::to_string(line_); }

  bool NextLine() {
    ++line_;
    const bool isRead = static_cast<bool>(std::getline(file_, text_));
    text_ = InSystemNames(text_);
    return isRead;
  }

  void ReadShort() {
    const std::size_t mark = text_.find(kShortMark);
    if (mark == std::string::npos) Refuse("neither a heading nor \"RESULT <= INPUT\"");
    cases_.push_back(
        {Place(), Unescaped(text_.substr(mark + kShortMark.size())), text_.substr(0, mark)});
  }

  // Reads up to the line after the case; false at the end of the file.
  bool ReadLong() {
    FileCase& added = cases_.emplace_back(FileCase{Place() + " " + text_, {}, {}});
    while (NextLine() && text_ != kResultLine)
      added.input += text_ + "\n";
    if (!file_) Refuse("a case without a result");
    if (!added.input.empty()) added.input.pop_back();
    bool more = false;
    while ((more = NextLine()) && !text_.starts_with(kHeading))
      added.result += text_ + "\n";
    while (added.result.ends_with("\n\n"))  // empty lines in front of the next heading
      added.result.pop_back();
    return more;
  }

  std::string Unescaped(const std::string& text) const {
    static constexpr std::string_view kLetters = "nrtvf0\\";
    static constexpr std::string_view kMeanings("\n\r\t\v\f\0\\", 7);
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (text[at] != '\\') {
        plain += text[at];
        continue;
      }
      const std::size_t which = ++at < text.size() ? kLetters.find(text[at]) : std::string::npos;
      if (which != std::string::npos) {
        plain += kMeanings[which];
      } else if (text.compare(at, 1, "x") == 0 && at + 2 < text.size()) {
        plain += static_cast<char>(std::stoi(text.substr(at + 1, 2), nullptr, 16));
        at += 2;
      } else {
        Refuse("an unknown escape");
      }
    }
    return plain;
  }

  std::filesystem::path path_;
  std::ifstream file_;
  std::string text_;
  int line_ = 0;
  std::vector<FileCase> cases_;
};

}  // namespace

std::vector<FileCase> ReadCaseFile(const std::filesystem::path& path) {
  return CaseReader(path).Read();
}

}  // namespace tarnmf::test
