// SPDX-License-Identifier: Apache-2.0
// A directory that is removed with its object. Names of machines and libraries are given as on Linux,
// and stand for those that the system has.
#ifndef TESTS_SUPPORT_TEMP_DIRECTORY_H
#define TESTS_SUPPORT_TEMP_DIRECTORY_H

#include <filesystem>
#include <string>
#include <string_view>

namespace tarnmf::test {

class TempDirectory {
 public:
  TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;
  ~TempDirectory();

  const std::filesystem::path& Path() const { return path_; }

  // The path of what is called that in the directory; without a name, of the directory. All
  // separators in it are "/".
  std::string At(const std::string& name = "") const;

  // Writes a file below the directory, making the folders on its way; returns its full path.
  std::string Write(const std::string& name, std::string_view content) const;

 private:
  std::filesystem::path path_;
};

// All bytes of a file.
std::string ReadFile(const std::filesystem::path& file);

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_TEMP_DIRECTORY_H
