// SPDX-License-Identifier: Apache-2.0
// Programs that run as processes of their own.
#ifndef TOOLS_TARNMF_CHILD_PROCESS_H
#define TOOLS_TARNMF_CHILD_PROCESS_H

#include <filesystem>
#include <string>
#include <vector>

namespace tool {

// Runs a program that is looked for in PATH, without a shell, and waits for its end. Both of its
// outputs go to a new file, or with an empty path to where this process's go. False when there is no
// such program or it fails.
bool RunProcess(const std::vector<std::string>& command, const std::filesystem::path& output);

}  // namespace tool

#endif  // TOOLS_TARNMF_CHILD_PROCESS_H
