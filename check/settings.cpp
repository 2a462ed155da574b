// SPDX-License-Identifier: Apache-2.0
#include "check/settings.h"

#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <iterator>
#include <utility>

#include "check/characters.h"
#include "check/paths.h"
#include "check/rule_names.h"
#include "check/source.h"
#include "check/wording.h"
#include "platform/host/system_path.h"

namespace tarnmf::check {
namespace {

constexpr char kFileName[] = ".tarnmf-check";
constexpr std::string_view kLevelNames[] = {"off", "info", "warning", "error"};  // by Severity

std::optional<Severity> LevelNamed(std::string_view name) {
  for (std::size_t i = 0; i < std::size(kLevelNames); ++i) {
    if (kLevelNames[i] == name) return static_cast<Severity>(i);
  }
  return std::nullopt;
}

// Reads the lines of one file.
class SettingsReader {
 public:
  explicit SettingsReader(Settings& settings, std::string text)
      : settings_(settings), source_(Source::OfText(settings.path, std::move(text))) {}

  void Read() {
    for (std::size_t line = 1; line <= source_.LineCount(); ++line) {
      const std::string_view whole = source_.Text(source_.Line(line));
      const std::string_view statement = Trimmed(whole.substr(0, whole.find('#')));
      if (!statement.empty()) ReadStatement(statement);
    }
  }

 private:
  void ReadStatement(std::string_view statement) {
    const std::size_t equals = statement.find('=');
    if (equals == statement.npos) {
      return Refuse(statement, "expected a line NAME = off|info|warning|error or loadpoint = DIR");
    }
    const std::string_view name = Trimmed(statement.substr(0, equals));
    const std::string_view value = Trimmed(statement.substr(equals + 1));
    if (name == "loadpoint") return ReadLoadpoint(statement, value);
    if (const auto fault = settings_.levels.Set(name, value)) Refuse(statement, *fault);
  }

  void ReadLoadpoint(std::string_view statement, std::string_view value) {
    if (value.empty()) return Refuse(statement, "\"loadpoint\" needs the path of a directory");
    const std::filesystem::path folder = SystemPath(settings_.path).parent_path();
    settings_.loadpoint = NarrowPathLike(
        settings_.path, (folder / SystemPath(std::string(value))).lexically_normal());
  }

  void Refuse(std::string_view statement, std::string_view sentence) {
    const Position at =
        source_.At(static_cast<std::size_t>(statement.data() - source_.Text().data()));
    settings_.faults.push_back(
        fmt::format("{}:{}:{}: {}", settings_.path, at.line, at.column, sentence));
  }

  Settings& settings_;
  const Source source_;
};

}  // namespace

std::string_view LevelName(Severity severity) {
  return kLevelNames[static_cast<std::size_t>(severity)];
}

std::optional<std::string> Levels::Set(std::string_view rule, std::string_view level) {
  const std::optional<Rule> named = RuleNamed(rule);
  if (!named) {
    return fmt::format("there is no rule \"{}\"{}", rule,
                       DidYouMean(CloseRules(rule).Best(), Quoted));
  }
  const std::optional<Severity> severity = LevelNamed(level);
  if (!severity) {
    return fmt::format("\"{}\" is no level for \"{}\"; expected {}", level, rule,
                       fmt::join(kLevelNames, ", "));
  }
  if (Describe(*named).severity == Severity::kError && *severity != Severity::kError) {
    return fmt::format("\"{}\" cannot be lowered to \"{}\": it stays an error", rule, level);
  }
  levels_[static_cast<std::size_t>(*named)] = severity;
  return std::nullopt;
}

Settings ParseSettings(std::string path, std::string text) {
  Settings settings;
  constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
  settings.path = std::move(path);
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  SettingsReader(settings, std::move(text)).Read();
  return settings;
}

const Settings* SettingsFinder::For(const std::string& directory) {
  const std::filesystem::path path = SystemPath(directory);
  const std::filesystem::path here = std::filesystem::current_path();
  std::filesystem::path folder = (here / path).lexically_normal();
  if (!folder.has_filename()) folder = folder.parent_path();
  return Find(folder, path.is_relative() ? here : path.root_path());
}

const Settings* SettingsFinder::Find(const std::filesystem::path& path,
                                     const std::filesystem::path& here) {
  const std::string folder = NarrowPath(path);
  if (const auto known = byFolder_.find(folder); known != byFolder_.end()) return known->second;
  std::filesystem::path whole = path / kFileName;
  if (here.has_relative_path()) whole = whole.lexically_proximate(here);
  const std::string file = NarrowPathLike("", whole);
  const Settings* found = nullptr;
  if (files_.IsFile(file)) {
    auto& settings = all_.emplace_back(std::make_unique<Settings>());
    if (std::optional<std::string> text = files_.Read(file)) {
      *settings = ParseSettings(file, *std::move(text));
    } else {
      settings->faults.push_back(fmt::format("{}:1:1: the settings cannot be read", file));
    }
    found = settings.get();
  } else if (path.has_relative_path()) {
    found = Find(path.parent_path(), here);
  }
  byFolder_.emplace(folder, found);
  return found;
}

}  // namespace tarnmf::check
