// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/check_command.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "check/check.h"
#include "check/fixes.h"
#include "check/paths.h"
#include "check/settings.h"
#include "check/verdict.h"
#include "platform/host/system_path.h"
#include "tools/tarnmf/directory.h"
#include "tools/tarnmf/replace_file.h"
#include "tools/tarnmf/report_github.h"
#include "tools/tarnmf/report_json.h"
#include "tools/tarnmf/report_sarif.h"
#include "tools/tarnmf/report_text.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/unified_diff.h"

namespace tool {
namespace {

using namespace tarnmf::check;

[[noreturn]] void Refuse(const std::vector<std::string>& sentences) {
  throw std::invalid_argument(fmt::format("{}", fmt::join(sentences, "\ntarnmf: ")));
}

Levels LevelsOf(const std::vector<std::string>& rules) {
  Levels levels;
  std::vector<std::string> faults;
  for (const std::string& text : rules) {
    const std::size_t equals = text.find('=');
    if (equals == text.npos) {
      faults.push_back(fmt::format("--rule {}: expected NAME=off|info|warning|error", text));
    } else if (const auto fault = levels.Set(text.substr(0, equals), text.substr(equals + 1))) {
      faults.push_back(fmt::format("--rule {}: {}", text, *fault));
    }
  }
  if (!faults.empty()) Refuse(faults);
  return levels;
}

// Empty when the directory or file can be checked.
std::string PathProblem(const std::string& path, Files& files) {
  if (files.IsFile(path)) return "";
  std::error_code failure;
  const std::filesystem::file_status status = std::filesystem::status(SystemPath(path), failure);
  if (std::filesystem::is_directory(status)) return DirectoryProblem(path);
  if (status.type() == std::filesystem::file_type::not_found)
    return "there is no such directory or file";
  return failure ? "it cannot be read: " + failure.message()
                 : "this is neither a directory nor a file";
}

void RequirePaths(const CheckOptions& options, Files& files) {
  std::vector<std::string> faults;
  const auto add = [&](const std::string& path, const std::string& problem) {
    if (!problem.empty()) faults.push_back(fmt::format("{}: {}", path, problem));
  };
  if (!options.loadpoint.empty()) add(options.loadpoint, DirectoryProblem(options.loadpoint));
  for (const std::string& path : options.paths)
    add(path, PathProblem(path, files));
  if (options.loadpoint.empty() && options.paths.empty()) {
    faults.emplace_back("a directory or file to check is needed");
  }
  if (!faults.empty()) Refuse(faults);
}

std::string DirectoryFor(const std::string& path, Files& files) {
  return files.IsDirectory(path) ? path : DirectoryOf(path);
}

// The settings of everything that is to be checked. Throws for any fault in them.
std::vector<const Settings*> SettingsOf(const Request& request, SettingsFinder& finder,
                                        Files& files) {
  std::vector<const Settings*> found;
  const auto add = [&](const std::string& directory) {
    const Settings* const settings = finder.For(directory);
    if (settings != nullptr && std::find(found.begin(), found.end(), settings) == found.end())
      found.push_back(settings);
  };
  if (!request.loadpoint.empty()) add(request.loadpoint);
  for (const std::string& path : request.paths)
    add(DirectoryFor(path, files));
  std::vector<std::string> faults;
  for (const Settings* settings : found)
    faults.insert(faults.end(), settings->faults.begin(), settings->faults.end());
  if (!faults.empty()) Refuse(faults);
  return found;
}

bool IsSame(const std::string& one, const std::string& other) {
  std::error_code failure;
  return std::filesystem::equivalent(SystemPath(one), SystemPath(other), failure) && !failure;
}

// Fills in the process's load point that the settings name, unless there is one. Files by themselves
// are no part of a process.
void TakeLoadpoint(const std::vector<const Settings*>& settings, Request& request, Files& files) {
  const bool anyDirectory =
      std::any_of(request.paths.begin(), request.paths.end(),
                  [&](const std::string& path) { return files.IsDirectory(path); });
  if (!request.loadpoint.empty() || !anyDirectory) return;
  const Settings* source = nullptr;
  for (const Settings* candidate : settings) {
    if (candidate->loadpoint.empty()) continue;
    if (const std::string problem = DirectoryProblem(candidate->loadpoint); !problem.empty()) {
      Refuse({fmt::format("{}: the loadpoint {}: {}", candidate->path, candidate->loadpoint,
                          problem)});
    }
    if (source != nullptr && !IsSame(source->loadpoint, candidate->loadpoint)) {
      Refuse({fmt::format("{} and {} name different loadpoints; say which one with --loadpoint",
                          source->path, candidate->path)});
    }
    source = candidate;
  }
  if (source == nullptr) return;
  request.loadpoint = source->loadpoint;
  // Whoever checks the load point itself means it in this role.
  std::erase_if(request.paths,
                [&](const std::string& path) { return IsSame(path, source->loadpoint); });
}

void Print(const Verdict& verdict, const CheckOptions& options) {
  if (options.json) {
    fmt::print("{}", JsonText(JsonReport(verdict)));
  } else if (options.sarif) {
    fmt::print("{}", JsonText(SarifReport(verdict)));
  } else if (options.github) {
    fmt::print("{}", GitHubReport(verdict));
  } else {
    fmt::print("{}", TextReport(verdict, {options.most, OutputIsColored()}));
  }
}

int Status(const Verdict& verdict, bool strict) {
  const bool fails =
      verdict.Count(Severity::kError) > 0 || (strict && verdict.Count(Severity::kWarning) > 0);
  return fails ? 1 : 0;
}

// False, and a sentence told: the file stays as it is.
bool Store(const FixedFile& file) {
  try {
    const std::optional<std::string> stored = DiskFiles().Read(file.path);
    if (stored == file.after) return true;  // under another path already
    if (stored != file.before) {
      Tell("{}: not fixed, since it has changed meanwhile", file.path);
      return false;
    }
    ReplaceContents(file.path, file.after);
    Tell("{}: corrections applied: {}", file.path, file.fixes);
    return true;
  } catch (const std::system_error& error) {
    Tell("{}: not fixed: {}", file.path, error.what());
    return false;
  }
}

}  // namespace

int RunCheck(const CheckOptions& options) {
  const Levels levels = LevelsOf(options.rules);
  DiskFiles files;
  RequirePaths(options, files);
  Request request{options.loadpoint, options.paths};
  SettingsFinder finder(files);
  TakeLoadpoint(SettingsOf(request, finder, files), request, files);

  bool allStored = true;
  if (options.fix || options.diff) {
    const FixOutcome outcome = Fix(request, files, finder, levels);
    for (const std::string& path : outcome.putBack)
      Tell("{}: not fixed, since it would have more errors then", path);
    for (const FixedFile& file : outcome.files) {
      if (options.fix) {
        allStored = Store(file) && allStored;
      } else {
        fmt::print("{}", UnifiedDiff(file.path, file.before, file.after));
      }
    }
  }
  // Read anew, since files may have been fixed.
  DiskFiles current;
  Report report = Check(request, current);
  const Verdict verdict = Judge(report, finder, levels);
  if (!options.diff) Print(verdict, options);
  return allStored ? Status(verdict, options.strict) : 1;
}

}  // namespace tool
