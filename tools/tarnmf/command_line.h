// SPDX-License-Identifier: Apache-2.0
// A command line that is still being written, as the tree of commands understands it.
#ifndef TOOLS_TARNMF_COMMAND_LINE_H
#define TOOLS_TARNMF_COMMAND_LINE_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

struct CommandLine {
  struct Given {
    const CLI::Option* option;  // or a positional argument
    std::string value;          // empty for a flag
  };

  const CLI::App* command = nullptr;  // the last one that is named
  std::vector<Given> given;
  bool optionsAreOver = false;  // by a "--"

  // What is being written, and what it is the value of; null: of nothing that the command takes. What
  // stands before the value in its word, "--rule=" for example, is `head`.
  const CLI::Option* target = nullptr;
  std::string head;
  std::string word;

  bool IsGiven(const CLI::Option* option) const;
};

// `words` follow the program's name; the last one is being written. Whatever the commands do not know
// is passed over.
CommandLine ReadCommandLine(const CLI::App& app, const std::vector<std::string>& words);

}  // namespace tool

#endif  // TOOLS_TARNMF_COMMAND_LINE_H
