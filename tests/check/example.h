// SPDX-License-Identifier: Apache-2.0
// The files of an example of the catalogue, or of a case in the same form.
#ifndef TESTS_CHECK_EXAMPLE_H
#define TESTS_CHECK_EXAMPLE_H

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>

#include "check/check.h"
#include "tests/support/temp_directory.h"

namespace tarnmf::test {

// They are below the working directory while this lives.
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
  Example(const Example&) = delete;
  Example& operator=(const Example&) = delete;
  ~Example() { std::filesystem::current_path(home_); }

  // What is to be checked.
  const check::Request& Request() const { return request_; }

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
  const TempDirectory directory_;
  check::Request request_;
};

}  // namespace tarnmf::test

#endif  // TESTS_CHECK_EXAMPLE_H
