// SPDX-License-Identifier: Apache-2.0
#include "check/check.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "check/answers.h"
#include "check/batch_rules.h"
#include "check/class_records.h"
#include "check/declared.h"
#include "check/file_rules.h"
#include "check/paths.h"
#include "check/preloads.h"
#include "check/truth.h"

namespace tarnmf::check {
namespace {

// Whether the file is read with its directory.
bool IsOfInstallation(const std::string& path) {
  return IsManifestFile(path) || IsLayoutFile(path);
}

// A path that is no directory is one of a file. A file in a directory that is checked as a whole is
// checked with that.
std::vector<std::unique_ptr<LoadPoint>> ReadLoadPoints(const Request& request, Files& files) {
  std::vector<std::unique_ptr<LoadPoint>> loadpoints;
  std::set<std::string, PathLess> directories;
  if (!request.loadpoint.empty()) {
    loadpoints.push_back(ReadProcessLoadPoint(request.loadpoint, files));
    directories.insert(AbsolutePath(request.loadpoint));
  }
  std::vector<std::string> singles;
  std::set<std::string, PathLess> known;  // however a file is written, it is checked once
  for (const std::string& path : request.paths) {
    if (!files.IsDirectory(path)) {
      if (known.insert(AbsolutePath(path)).second) singles.push_back(path);
      continue;
    }
    loadpoints.push_back(ReadInstallation(path, files));
    directories.insert(AbsolutePath(path));
  }
  std::map<std::string, std::vector<std::string>> byDirectory;
  for (const std::string& path : singles) {
    const std::string directory = DirectoryOf(path);
    if (IsOfInstallation(path) && directories.contains(AbsolutePath(directory))) continue;
    byDirectory[directory].push_back(path);
  }
  for (const auto& [directory, paths] : byDirectory)
    loadpoints.push_back(ReadSingleFiles(directory, paths, files));
  if (request.loadpoint.empty() || !FitsProcess(loadpoints.front()->path)) return loadpoints;
  for (const auto& loadpoint : loadpoints)
    loadpoint->processPath = loadpoints.front()->path;
  return loadpoints;
}

// Moves the findings that were asked for, file by file and each file's by their places, none twice.
void MoveSorted(const LoadPoint& loadpoint, std::vector<Finding>&& findings,
                std::vector<Finding>& report) {
  std::map<const Source*, std::size_t> orders;
  const auto count = [&](const Source& source) { orders.emplace(&source, orders.size()); };
  count(loadpoint.directory);
  if (loadpoint.layout != nullptr) count(loadpoint.layout->source);
  for (const auto& source : loadpoint.unreadable)
    count(*source);
  for (const auto& manifest : loadpoint.manifests)
    count(manifest->source);
  if (!loadpoint.asked.empty()) {
    std::erase_if(findings, [&](const Finding& finding) {
      return finding.rule != Rule::kLibraryDisagrees &&
             !loadpoint.asked.contains(finding.place.source->Path());
    });
  }
  const auto key = [&](const Finding& finding) {
    return std::make_tuple(orders[finding.place.source], finding.place.span.begin);
  };
  std::stable_sort(
      findings.begin(), findings.end(),
      [&](const Finding& left, const Finding& right) { return key(left) < key(right); });
  const auto isSame = [](const Finding& left, const Finding& right) {
    return left.rule == right.rule && left.place.source == right.place.source &&
           left.place.span == right.place.span && left.message == right.message;
  };
  const auto end = std::unique(findings.begin(), findings.end(), isSame);
  report.reserve(report.size() + static_cast<std::size_t>(end - findings.begin()));
  std::move(findings.begin(), end, std::back_inserter(report));
}

// The load points with what is needed to judge them together.
class ProcessCheck {
 public:
  ProcessCheck(const std::vector<std::unique_ptr<LoadPoint>>& loadpoints, Files& files,
               bool asksLibrary)
      : loadpoints_(loadpoints),
        files_(files),
        asksLibrary_(asksLibrary),
        declared_(DeclaredBy(loadpoints)) {
    for (const auto& loadpoint : loadpoints)
      classes_.push_back(ClassRecordsOf(*loadpoint));
  }

  void Run(std::vector<Finding>& report) {
    const Answers answers(FiledLoadPoints());
    for (std::size_t i = 0; i < loadpoints_.size(); ++i)
      CheckOne(*loadpoints_[i], classes_[i], answers, report);
  }

 private:
  // In which role single files are read is not known, and so not what they come to.
  std::vector<IndexedLoadPoint> FiledLoadPoints() const {
    std::vector<IndexedLoadPoint> filed;
    for (std::size_t i = 0; i < loadpoints_.size(); ++i) {
      const LoadPoint& loadpoint = *loadpoints_[i];
      if (loadpoint.role != LoadPoint::Role::kUnknown && !loadpoint.isDuplicate)
        filed.push_back({&loadpoint, &classes_[i]});
    }
    return filed;
  }

  void CheckOne(const LoadPoint& loadpoint, const std::vector<ClassRecord>& classes,
                const Answers& answers, std::vector<Finding>& report) {
    std::vector<Finding> findings = loadpoint.findings;
    const auto append = [&](const std::vector<Finding>& more) {
      findings.insert(findings.end(), more.begin(), more.end());
    };
    if (loadpoint.layout != nullptr) append(loadpoint.layout->findings);
    for (const auto& manifest : loadpoint.manifests)
      append(manifest->findings);
    CheckBatch(loadpoint, classes, declared_, findings);
    CheckAnswers(answers, loadpoint, findings);
    CheckPreloads(loadpoint, declared_, findings);
    CheckFiles(loadpoint, files_, findings);
    if (asksLibrary_) CompareWithLibrary(loadpoint, findings);
    MoveSorted(loadpoint, std::move(findings), report);
  }

  const std::vector<std::unique_ptr<LoadPoint>>& loadpoints_;
  Files& files_;
  const bool asksLibrary_;
  const Declared declared_;
  std::vector<std::vector<ClassRecord>> classes_;  // by load point
};

}  // namespace

Report Check(const Request& request, Files& files) {
  Report report;
  report.loadpoints = ReadLoadPoints(request, files);
  FindDuplicates(report.loadpoints);
  const bool asksLibrary = request.asksLibrary && files.AreOnDisk();
  ProcessCheck(report.loadpoints, files, asksLibrary).Run(report.findings);
  return report;
}

}  // namespace tarnmf::check
