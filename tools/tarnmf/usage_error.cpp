// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/usage_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <vector>

#include "tools/tarnmf/name_hint.h"

namespace tool {
namespace {

// The command that was being read, as it is written: "tarnmf find class".
struct Command {
  const CLI::App* app;
  std::string name;
};

Command DeepestCommand(const CLI::App& app) {
  Command command{&app, app.get_name()};
  while (!command.app->get_subcommands().empty()) {
    const CLI::App* const next = command.app->get_subcommands().front();
    if (!next->get_name().empty()) command.name += " " + next->get_name();
    command.app = next;
  }
  return command;
}

std::vector<std::string> OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    if (option->get_group().empty()) continue;
    for (const std::string& name : option->get_lnames())
      names.push_back("--" + name);
  }
  return names;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (!command->get_name().empty()) names.push_back(command->get_name());
  }
  return names;
}

std::string UnexpectedSentence(const Command& command, const std::string& argument) {
  if (argument.front() == '-') {
    const std::string option = argument.substr(0, argument.find('='));
    return fmt::format("\"{}\" is no option of \"{}\"{}", option, command.name,
                       CloseNamesHint(option, OptionNames(*command.app)));
  }
  const std::vector<std::string> commands = CommandNames(*command.app);
  if (commands.empty())
    return fmt::format("\"{}\" is one argument too many for \"{}\"", argument, command.name);
  return fmt::format("\"{}\" is no command of \"{}\"{}", argument, command.name,
                     NameHint(argument, commands, "there are"));
}

std::string MissingCommandSentence(const Command& command) {
  return fmt::format("\"{}\" needs a command; there are: {}", command.name,
                     fmt::join(CommandNames(*command.app), ", "));
}

}  // namespace

std::string CountProblem(const std::string& text) {
  const bool isCount = text.find_first_not_of("0123456789") == text.npos;
  return isCount ? "" : fmt::format("\"{}\" is no count", text);
}

std::string UsageSentence(const CLI::App& app, const CLI::ParseError& error) {
  const Command command = DeepestCommand(app);
  for (const std::string& argument : command.app->remaining()) {
    if (!argument.empty()) return UnexpectedSentence(command, argument);
  }
  if (command.app->get_require_subcommand_min() > 0 && command.app->get_subcommands().empty())
    return MissingCommandSentence(command);
  return fmt::format("\"{}\": {}", command.name, error.what());
}

}  // namespace tool
