// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/command_line.h"

#include <algorithm>

namespace tool {
namespace {

class Reader {
 public:
  explicit Reader(const CLI::App& app) { line_.command = &app; }

  void Pass(const std::string& word) {
    if (pending_ != nullptr) {
      line_.given.push_back({pending_, word});
      pending_ = nullptr;
    } else if (!IsOption(word)) {
      PassArgument(word);
    } else if (word == "--") {
      line_.optionsAreOver = true;
    } else {
      PassOption(word);
    }
  }

  CommandLine EndIn(const std::string& word) {
    const std::size_t equals = word.find('=');
    if (pending_ != nullptr) {
      line_.target = pending_;
    } else if (!IsOption(word)) {
      line_.target = NextArgument();
    } else if (equals != word.npos) {
      line_.target = OptionNamed(word.substr(0, equals));
      line_.head = word.substr(0, equals + 1);
    }
    line_.word = word.substr(line_.head.size());
    return std::move(line_);
  }

 private:
  bool IsOption(const std::string& word) const {
    return !line_.optionsAreOver && word.starts_with('-');
  }
  const CLI::Option* OptionNamed(const std::string& name) const {
    return line_.command->get_option_no_throw(name);
  }

  void PassOption(const std::string& word) {
    const std::size_t equals = word.find('=');
    const CLI::Option* const option = OptionNamed(word.substr(0, equals));
    if (option == nullptr) return;
    if (equals != word.npos) {
      line_.given.push_back({option, word.substr(equals + 1)});
    } else if (option->get_items_expected_max() > 0) {
      pending_ = option;
    } else {
      line_.given.push_back({option, ""});
    }
  }

  void PassArgument(const std::string& word) {
    const auto named = line_.command->get_subcommands(
        [&](const CLI::App* command) { return command->get_name() == word; });
    if (!line_.optionsAreOver && !named.empty()) {
      line_.command = named.front();
      line_.given.clear();
    } else if (const CLI::Option* argument = NextArgument()) {
      line_.given.push_back({argument, word});
    }
  }

  // The first positional argument that takes one more.
  const CLI::Option* NextArgument() const {
    for (const CLI::Option* option : line_.command->get_options()) {
      const auto count =
          std::count_if(line_.given.begin(), line_.given.end(),
                        [&](const CommandLine::Given& given) { return given.option == option; });
      if (option->get_positional() && count < option->get_items_expected_max()) return option;
    }
    return nullptr;
  }

  CommandLine line_;
  const CLI::Option* pending_ = nullptr;  // waits for its value
};

}  // namespace

bool CommandLine::IsGiven(const CLI::Option* option) const {
  return std::any_of(given.begin(), given.end(),
                     [&](const Given& each) { return each.option == option; });
}

CommandLine ReadCommandLine(const CLI::App& app, const std::vector<std::string>& words) {
  Reader reader(app);
  if (words.empty()) return reader.EndIn("");
  for (auto word = words.begin(); word != words.end() - 1; ++word)
    reader.Pass(*word);
  return reader.EndIn(words.back());
}

}  // namespace tool
