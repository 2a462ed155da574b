// SPDX-License-Identifier: Apache-2.0
// Directories as the commands are given them.
#ifndef TOOLS_TARNMF_DIRECTORY_H
#define TOOLS_TARNMF_DIRECTORY_H

#include <string>

namespace tool {

// What keeps a directory from being read, in words; empty when nothing does.
std::string DirectoryProblem(const std::string& path);

// The whole path without "." and "..", which keeps its place whatever the working directory is. An
// empty path stays empty.
std::string Absolute(const std::string& path);

}  // namespace tool

#endif  // TOOLS_TARNMF_DIRECTORY_H
