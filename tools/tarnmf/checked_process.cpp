// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/checked_process.h"

#include <cstdio>
#include <fmt/format.h>
#include <stdexcept>

#include "tools/tarnmf/directory.h"
#include "tools/tarnmf/output.h"
#include "tools/tarnmf/report_text.h"
#include "tools/tarnmf/tell.h"

namespace tool {
namespace {

using namespace tarnmf::check;

Request RequestOf(const ProcessOptions& options) {
  if (options.loadpoint.empty() && options.installations.empty())
    throw std::invalid_argument("a directory is needed");
  RequireDirectories(options);
  return {options.loadpoint, options.installations};
}

}  // namespace

void RequireDirectories(const ProcessOptions& options) {
  std::vector<std::string> directories = options.installations;
  if (!options.loadpoint.empty()) directories.insert(directories.begin(), options.loadpoint);
  for (const std::string& directory : directories) {
    const std::string problem = DirectoryProblem(directory);
    if (!problem.empty()) throw std::invalid_argument(fmt::format("{}: {}", directory, problem));
  }
}

void AddProcessOptions(CLI::App& command, ProcessOptions& options) {
  command.add_option("--loadpoint", options.loadpoint, "load point of the process")
      ->type_name("DIR")
      ->allow_extra_args(false);
  command.add_option("DIR", options.installations, "directories of installations");
}

CheckedProcess::CheckedProcess(const ProcessOptions& options)
    : report_(Check(RequestOf(options), files_)), errors_(ErrorsByLoadPoint(report_)) {
  for (const auto& loadpoint : report_.loadpoints)
    classes_.push_back(ClassRecordsOf(*loadpoint));
  std::vector<IndexedLoadPoint> filed;
  for (std::size_t i = 0; i < classes_.size(); ++i) {
    if (!IsRefused(i)) filed.push_back({report_.loadpoints[i].get(), &classes_[i]});
  }
  answers_ = std::make_unique<const tarnmf::check::Answers>(filed);
}

void CheckedProcess::PrintRefused() const {
  std::fflush(stdout);
  for (std::size_t i = 0; i < errors_.size(); ++i) {
    if (!IsRefused(i)) continue;
    WriteError(TextReport(errors_[i], {}));
    Tell("the library refuses load point {}, so that nothing of it is there",
         report_.loadpoints[i]->directory.Path());
  }
}

std::string PlaceText(const Place& place) {
  const Position at = place.source->At(place.span.begin);
  return fmt::format("{}:{}:{}", place.source->Path(), at.line, at.column);
}

}  // namespace tool
