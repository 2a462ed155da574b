// SPDX-License-Identifier: Apache-2.0
// "tarnmf complete -- WORD...": what may stand at the end of a command line, for shells.
#ifndef TOOLS_TARNMF_COMPLETE_COMMAND_H
#define TOOLS_TARNMF_COMPLETE_COMMAND_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

// Whether the arguments of main ask for it. They are not for the parser, which would take the words of
// the line for its own.
bool IsCompletion(const std::vector<std::string>& arguments);

// The words after "--" are those of the line, without the name of the program, up to the one that is
// being written, which may be empty. Prints a line for each whole word that may stand in its place:
// the word, a tab and a description. Where paths are wanted a line follows that has nothing before the
// tab and "files" or "directories" behind it. Nothing is told of what is wrong with the line.
void RunComplete(const CLI::App& app, const std::vector<std::string>& arguments);

}  // namespace tool

#endif  // TOOLS_TARNMF_COMPLETE_COMMAND_H
