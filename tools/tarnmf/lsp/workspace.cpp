// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/workspace.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <system_error>
#include <utility>

#include "check/paths.h"
#include "check/settings.h"
#include "platform/host/system_path.h"

namespace tool::lsp {
namespace {

namespace fs = std::filesystem;
using namespace tarnmf::check;

bool IsSame(const Request& one, const Request& other) {
  return one.loadpoint == other.loadpoint && one.paths == other.paths;
}

std::vector<std::string> PathsOf(const Request& request) {
  std::vector<std::string> paths = request.paths;
  if (!request.loadpoint.empty()) paths.insert(paths.begin(), request.loadpoint);
  return paths;
}

}  // namespace

bool Process::Includes(const std::string& path) const {
  const std::string directory = DirectoryOf(path);
  return request.loadpoint == directory ||
         std::any_of(request.paths.begin(), request.paths.end(), [&](const std::string& each) {
           return IsSamePath(each, path) || each == directory;
         });
}

Workspace::Workspace(const Request& given) {
  given_.asksLibrary = false;
  if (!given.loadpoint.empty()) given_.loadpoint = KnownDirectory(given.loadpoint);
  for (const std::string& path : given.paths)
    given_.paths.push_back(KnownDirectory(path));
  Arrange();
}

bool Workspace::IsManifest(const std::string& path) {
  return IsManifestFile(path);
}

bool Workspace::IsServed(const std::string& path) {
  return IsManifest(path) || IsLayoutFile(path);
}

std::string Workspace::KnownDirectory(const std::string& written) {
  fs::path directory = SystemPath(AbsolutePath(written));
  if (!directory.has_filename() && directory != directory.root_path())
    directory = directory.parent_path();
  std::error_code failure;
  const fs::path whole = fs::weakly_canonical(directory, failure);
  const std::string canonical = NarrowPath(failure ? directory : whole);
  if (const auto known = spellings_.find(canonical); known != spellings_.end())
    return known->second;
  // Not every standard library takes the links out of a path.
  const auto same = std::find_if(spellings_.begin(), spellings_.end(), [&](const auto& known) {
    return fs::equivalent(SystemPath(known.first), directory, failure);
  });
  std::string spelling =
      same != spellings_.end() ? same->second : NarrowPathLike(written, directory);
  return spellings_.emplace(canonical, std::move(spelling)).first->second;
}

std::string Workspace::KnownPath(const std::string& written) {
  return PathIn(KnownDirectory(DirectoryOf(written)), FileNameOf(written));
}

void Workspace::Edit(const std::string& path, const std::string& text) {
  if (IsManifest(path)) {
    files_.EditText(path, text);
  } else {
    files_.Edit(path, text);
  }
  if (open_.insert(path).second) Arrange();
  Notice(path);
}

void Workspace::Close(const std::string& path) {
  files_.Drop(path);
  open_.erase(path);
  Notice(path);
  Arrange();
}

void Workspace::Notice(const std::string& path) {
  stored_.Forget(path);
  for (const auto& process : processes_)
    process->isStale = process->isStale || process->Includes(path);
  isStale_ = true;
}

void Workspace::NoticeAll() {
  for (const auto& process : processes_)
    process->isStale = true;
  Arrange();
}

Process* Workspace::ProcessWith(const std::string& path) const {
  const auto found = std::find_if(processes_.begin(), processes_.end(),
                                  [&](const auto& process) { return process->Includes(path); });
  return found != processes_.end() ? found->get() : nullptr;
}

// ---- What is checked together -------------------------------------------------------------------

void Workspace::Arrange() {
  std::vector<std::unique_ptr<Process>> arranged;
  for (Request& request : Wanted()) {
    const auto known = std::find_if(processes_.begin(), processes_.end(), [&](const auto& process) {
      return process != nullptr && IsSame(process->request, request);
    });
    if (known != processes_.end()) {
      arranged.push_back(std::move(*known));
    } else {
      arranged.push_back(std::make_unique<Process>());
      arranged.back()->request = std::move(request);
    }
  }
  processes_ = std::move(arranged);
  isStale_ = true;
}

std::vector<Request> Workspace::Wanted() {
  settingsFaults_.clear();
  std::vector<Request> wanted;
  std::set<std::string> given;
  for (std::string& path : PathsOf(given_))
    given.insert(std::move(path));
  if (!given.empty()) wanted.push_back(given_);

  std::map<std::string, std::vector<std::string>> byDirectory;
  for (const std::string& path : open_) {
    std::string directory = DirectoryOf(path);
    if (!given.contains(directory)) byDirectory[std::move(directory)].push_back(path);
  }
  std::map<std::string, std::size_t> byLoadPoint;  // numbers in `wanted`
  for (const auto& [directory, files] : byDirectory) {
    const std::string loadpoint = LoadPointOf(directory);
    if (!files_.IsDirectory(directory)) {
      wanted.push_back({"", files, false});  // it is yet to be made
    } else if (loadpoint.empty()) {
      wanted.push_back({"", {directory}, false});
    } else {
      const auto [place, isNew] = byLoadPoint.try_emplace(loadpoint, wanted.size());
      if (isNew) wanted.push_back({loadpoint, {}, false});
      if (directory != loadpoint) wanted[place->second].paths.push_back(directory);
    }
  }
  return wanted;
}

// The load point of the process, as the settings of the directory name it; else empty.
std::string Workspace::LoadPointOf(const std::string& directory) {
  SettingsFinder finder(files_);
  const Settings* const settings = finder.For(directory);
  if (settings == nullptr) return "";
  settingsFaults_.insert(settings->faults.begin(), settings->faults.end());
  if (settings->loadpoint.empty()) return "";
  if (files_.IsDirectory(settings->loadpoint)) return KnownDirectory(settings->loadpoint);
  settingsFaults_.insert(
      fmt::format("{}: there is no loadpoint {}", settings->path, settings->loadpoint));
  return "";
}

void Workspace::Refresh() {
  for (const auto& process : processes_) {
    if (!process->isStale) continue;
    // What was found before makes room first.
    process->verdict = {};
    process->report = {};
    process->report = Check(process->request, files_);
    SettingsFinder settings(files_);
    process->verdict = Judge(process->report, settings, Levels());
    process->isStale = false;
  }
  stored_.ForgetUnused();
  isStale_ = false;
}

LoadPoints Workspace::ManifestsOf(const Process& process) {
  LoadPoints loadpoints;
  for (const std::string& path : PathsOf(process.request)) {
    std::vector<std::string> files{path};
    if (files_.IsDirectory(path)) {
      files = files_.ManifestsIn(path).names;
      for (std::string& name : files)
        name = PathIn(path, name);
    }
    auto& manifests = loadpoints.emplace_back();
    for (const std::string& file : files) {
      if (auto manifest = files_.ReadManifest(file)) manifests.push_back(std::move(manifest));
    }
  }
  return loadpoints;
}

}  // namespace tool::lsp
