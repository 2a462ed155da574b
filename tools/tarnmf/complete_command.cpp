// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/complete_command.h"

#include <algorithm>
#include <exception>
#include <fmt/format.h>
#include <iterator>
#include <set>

#include "tools/tarnmf/argument_completion.h"
#include "tools/tarnmf/command_line.h"
#include "tools/tarnmf/printable.h"

namespace tool {
namespace {

constexpr std::size_t kBeforeWords = 3;  // the program, "complete" and "--"

// Whether the parser refuses one more of it.
bool IsRefused(const CommandLine& line, const CLI::Option& option) {
  const auto isGiven = [&](const CLI::Option* other) { return line.IsGiven(other); };
  const std::set<CLI::Option*>& excluded = option.get_excludes();
  return (option.get_expected_max() <= 1 && isGiven(&option)) ||
         std::any_of(excluded.begin(), excluded.end(), isGiven);
}

// The options of a command, those of its groups among them.
void AddOptions(const CLI::App& command, const CommandLine& line,
                std::vector<Candidate>& candidates) {
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_group().empty() || IsRefused(line, *option)) continue;
    for (const std::string& name : option->get_lnames())
      candidates.push_back({"--" + name, option->get_description()});
  }
  for (const CLI::App* group :
       command.get_subcommands([](const CLI::App* each) { return each->get_name().empty(); }))
    AddOptions(*group, line, candidates);
}

void AddCommands(const CLI::App& command, std::vector<Candidate>& candidates) {
  for (const CLI::App* sub :
       command.get_subcommands([](const CLI::App* each) { return !each->get_name().empty(); }))
    candidates.push_back({sub->get_name(), sub->get_description()});
}

ArgumentCompletion Complete(const CommandLine& line) {
  ArgumentCompletion completion = CompleteArgument(line);
  if (line.optionsAreOver) return completion;
  // What begins like an option would be taken for one.
  std::erase_if(completion.candidates,
                [](const Candidate& each) { return each.text.starts_with('-'); });
  if (line.target != nullptr || !line.head.empty()) return completion;
  if (line.word.starts_with('-')) {
    AddOptions(*line.command, line, completion.candidates);
  } else {
    AddCommands(*line.command, completion.candidates);
  }
  return completion;
}

std::string InOneCell(std::string_view text) {
  std::string cell = Printable(text);
  std::replace(cell.begin(), cell.end(), '\t', ' ');
  return cell;
}

// Candidates that go on what is written, each once. A text that no line can hold, or no terminal may
// be given, is left out.
void Print(const CommandLine& line, const ArgumentCompletion& completion) {
  std::set<std::string> printed;
  for (const auto& [text, description] : completion.candidates) {
    if (!text.starts_with(line.word) || text != InOneCell(text)) continue;
    if (printed.insert(text).second)
      fmt::print("{}{}\t{}\n", line.head, text, InOneCell(description));
  }
  if (completion.paths == ArgumentCompletion::Paths::kFiles) fmt::print("\tfiles\n");
  if (completion.paths == ArgumentCompletion::Paths::kDirectories) fmt::print("\tdirectories\n");
}

}  // namespace

bool IsCompletion(const std::vector<std::string>& arguments) {
  return arguments.size() >= kBeforeWords && arguments[1] == "complete" && arguments[2] == "--";
}

void RunComplete(const CLI::App& app, const std::vector<std::string>& arguments) {
  const auto words = arguments.begin() + kBeforeWords;
  const CommandLine line = ReadCommandLine(app, {words, arguments.end()});
  ArgumentCompletion completion;
  try {
    completion = Complete(line);
  } catch (const std::exception&) {
    // The person who writes the line has not asked for anything, so is not told of a failure either.
    return;
  }
  Print(line, completion);
}

}  // namespace tool
