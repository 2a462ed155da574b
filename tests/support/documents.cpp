// SPDX-License-Identifier: Apache-2.0
#include "tests/support/documents.h"

#include <stdexcept>

namespace tarnmf::test {

std::string WithIds(std::string text) {
  for (std::size_t at = 0; (at = text.find('$', at)) != std::string::npos;)
    text.replace(at, 2, "00000000-0000-0000-0000-00000000000" + text.substr(at + 1, 1));
  return text;
}

std::string InRoot(const std::string& content) {
  return "<tarnmanifest version=\"1\">" + content + "</tarnmanifest>";
}

std::string DocumentOf(const std::string& text) {
  return text.starts_with("<?xml") ? text : InRoot(WithIds(text));
}

std::vector<FileCase> ReadDocumentCaseFile(const std::filesystem::path& file) {
  std::vector<FileCase> cases = ReadCaseFile(file);
  const bool isWhole = file.stem() == "documents";
  for (FileCase& one : cases) {
    one.input = WithIds(isWhole ? one.input : InRoot(one.input));
    one.result = WithIds(one.result);
  }
  return cases;
}

std::vector<FileCase> ReadDocumentCases(const std::filesystem::path& folder) {
  std::vector<FileCase> all;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".cases") continue;
    for (FileCase& one : ReadDocumentCaseFile(entry.path()))
      all.push_back(std::move(one));
  }
  if (all.empty()) throw std::runtime_error("no case file in " + folder.string());
  return all;
}

}  // namespace tarnmf::test
