// SPDX-License-Identifier: Apache-2.0
// Tables of inputs with what is to come of them, kept as text files. The fuzz targets start from the
// same inputs.
//
// A line that is empty or starts with "#" says nothing. A short case is one line,
//   RESULT <= INPUT
// in whose input \n, \r, \t, \v, \f, \0, \xHH and \\ are escapes. A long case is
//   === what it is about
//   its input, as it stands, without the last line feed
//   ---
//   its result, up to the next such heading
// Machines and libraries are named as on Linux, and read with the names that they have here.
#ifndef TESTS_SUPPORT_CASE_FILE_H
#define TESTS_SUPPORT_CASE_FILE_H

#include <filesystem>
#include <string>
#include <vector>

namespace tarnmf::test {

struct FileCase {
  std::string name;  // "FILE:LINE"
  std::string input;
  std::string result;
};

// Throws std::runtime_error with the place of the fault when the file is not as described above, or
// holds no case at all.
std::vector<FileCase> ReadCaseFile(const std::filesystem::path& path);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_CASE_FILE_H
