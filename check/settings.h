// SPDX-License-Identifier: Apache-2.0
// Which findings are told, and how gravely: what a command line and files ".tarnmf-check" say.
#ifndef CHECK_SETTINGS_H
#define CHECK_SETTINGS_H

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/files.h"
#include "check/rules.h"

namespace tarnmf::check {

// "off", "info", "warning" or "error".
std::string_view LevelName(Severity severity);

class Levels {
 public:
  // Reads a level as people write it. Returns what is wrong with it, in one sentence; nothing when
  // it is set. What the library refuses stays an error.
  std::optional<std::string> Set(std::string_view rule, std::string_view level);

  // Nothing when nothing is said about the rule.
  std::optional<Severity> Of(Rule rule) const { return levels_[static_cast<std::size_t>(rule)]; }

 private:
  std::array<std::optional<Severity>, kRuleCount> levels_{};
};

// What a settings file says: lines "NAME = off|info|warning|error" and "loadpoint = DIR"; a "#" and
// what follows it in its line is a comment. Of two lines about one thing the later one counts.
struct Settings {
  std::string path;
  Levels levels;
  std::string loadpoint;            // of the process, as it is opened from here; empty: none
  std::vector<std::string> faults;  // "PATH:LINE:COLUMN: " and a sentence
};

Settings ParseSettings(std::string path, std::string text);

// Finds the settings of directories: those of the file in the directory itself or in the nearest
// folder above it.
class SettingsFinder {
 public:
  explicit SettingsFinder(Files& files) : files_(files) {}

  // Null without such a file. The settings live as long as the finder. Their paths are relative for a
  // directory that is.
  const Settings* For(const std::string& directory);

 private:
  const Settings* Find(const std::filesystem::path& folder, const std::filesystem::path& here);

  Files& files_;
  std::map<std::string, const Settings*> byFolder_;  // absolute paths
  std::vector<std::unique_ptr<Settings>> all_;
};

}  // namespace tarnmf::check

#endif  // CHECK_SETTINGS_H
