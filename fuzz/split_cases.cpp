// SPDX-License-Identifier: Apache-2.0
// Writes the inputs of case files as files of their own into a folder, which is emptied before:
//   split_cases documents|texts FOLDER CASE-FILE...
// For "documents" an input is completed to the document that it stands for.
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <string_view>

#include "tests/support/case_file.h"
#include "tests/support/documents.h"

namespace fs = std::filesystem;
using tarnmf::test::FileCase;
using tarnmf::test::ReadCaseFile;
using tarnmf::test::ReadDocumentCaseFile;

int main(int argc, char** argv) try {
  if (argc < 4) return 1;
  const bool documents = std::string_view(argv[1]) == "documents";
  const fs::path folder = argv[2];
  fs::remove_all(folder);
  fs::create_directories(folder);
  for (int i = 3; i < argc; ++i) {
    const fs::path source = argv[i];
    int number = 0;
    for (const FileCase& each : documents ? ReadDocumentCaseFile(source) : ReadCaseFile(source)) {
      const std::string name = source.stem().string() + "-" + std::to_string(++number);
      std::ofstream file(folder / name, std::ios::binary);
      if (!(file << each.input).flush()) return 1;
    }
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "split_cases: %s\n", error.what());
  return 1;
}
