// SPDX-License-Identifier: Apache-2.0
// Programs of others that commands are helped by.
#ifndef TOOLS_TARNMF_OTHER_PROGRAMS_H
#define TOOLS_TARNMF_OTHER_PROGRAMS_H

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tool {

// A directory of its own that is removed with the object. Throws when there can be none.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory();

  const std::filesystem::path& Path() const { return path_; }

 private:
  explicit ScratchDirectory(std::filesystem::path path) : path_(std::move(path)) {}

  std::filesystem::path path_;
};

// Runs a program that is looked for in PATH, without a shell, with this process's standard streams.
// False when there is no such program or it fails.
bool RunProgram(const std::vector<std::string>& command);

// The same for a program whose messages on standard output and standard error are of interest only
// when it fails: these are written to standard error then.
bool RunQuietly(const std::vector<std::string>& command);

}  // namespace tool

#endif  // TOOLS_TARNMF_OTHER_PROGRAMS_H
