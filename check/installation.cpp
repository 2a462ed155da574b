// SPDX-License-Identifier: Apache-2.0
#include "check/installation.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <optional>

#include "check/declared.h"
#include "check/layout_file.h"
#include "check/paths.h"
#include "check/suggestions.h"
#include "check/wording.h"
#include "platform/filesystem.h"
#include "platform/host/system_path.h"
#include "platform/runtime.h"

namespace tarnmf::check {
namespace {

namespace fs = std::filesystem;

constexpr char kLayoutName[] = ".installed";

// What is not declared by what was read may be declared elsewhere.
void LeaveOpen(LoadPoint& loadpoint) {
  loadpoint.knowsModules = false;
  loadpoint.knowsServices = false;
  loadpoint.isComplete = false;
}

// The library refuses a file of its list that it cannot open; what else cannot be read, it takes for
// not being there.
void TellUnreadable(LoadPoint& loadpoint, const std::string& path, BtkErrorT code,
                    std::string message) {
  loadpoint.unreadable.push_back(std::make_unique<const Source>(Source::OfText(path, "")));
  loadpoint.findings.push_back(
      Found(Rule::kUnreadable, code, {loadpoint.unreadable.back().get(), {}}, std::move(message)));
  LeaveOpen(loadpoint);
}

std::string CannotBeRead(const std::optional<std::string>& why) {
  std::string message = "the file cannot be read";
  return why ? fmt::format("{}: {}", message, *why) : message;
}

void ReadManifests(LoadPoint& loadpoint, const std::vector<std::string>& paths, Files& files) {
  for (const std::string& path : paths) {
    if (std::shared_ptr<const Manifest> manifest = files.ReadManifest(path)) {
      if (MayHideModules(*manifest)) loadpoint.knowsModules = false;
      if (MayHideServices(*manifest)) loadpoint.knowsServices = false;
      loadpoint.isComplete = loadpoint.knowsModules && loadpoint.knowsServices;
      loadpoint.manifests.push_back(std::move(manifest));
    } else {
      TellUnreadable(loadpoint, path, kBtkMissing, CannotBeRead(files.WhyUnreadable(path)));
    }
  }
}

std::vector<std::string> ManifestPaths(LoadPoint& loadpoint, Files& files) {
  const std::string& directory = loadpoint.directory.Path();
  ManifestList list = files.ManifestsIn(directory.empty() ? "." : directory);
  for (std::string& name : list.names)
    name = PathIn(directory, name);
  for (ManifestList::Unlisted& unlisted : list.unlisted) {
    TellUnreadable(loadpoint, unlisted.path, kBtkOk,
                   fmt::format("this is taken for not being there: {}", unlisted.why));
  }
  return std::move(list.names);
}

void ReadDirectory(LoadPoint& loadpoint, Files& files) {
  const std::vector<std::string> paths = ManifestPaths(loadpoint, files);
  if (paths.empty() && loadpoint.unreadable.empty()) {
    loadpoint.findings.push_back(
        Found(Rule::kNoManifests, kBtkOk, {&loadpoint.directory, {}},
              fmt::format("no *.tmfx in \"{}\"", loadpoint.directory.Path())));
  }
  ReadManifests(loadpoint, paths, files);
}

// A file that cannot be read counts as none, as it does for the library. Returns false when there is
// none.
bool ReadLayoutOf(LoadPoint& loadpoint, Files& files) {
  const std::string& directory = loadpoint.directory.Path();
  const std::string path = PathIn(directory, kLayoutName);
  if (std::optional<std::string> bytes = files.Read(path)) {
    loadpoint.layout = ReadLayout(path, AbsolutePath(directory), *std::move(bytes));
  } else if (const std::optional<std::string> why = files.WhyUnreadable(path)) {
    TellUnreadable(loadpoint, path, kBtkOk,
                   fmt::format("the base and the scope that it gives are not read: {}", *why));
  } else {
    return false;
  }
  return true;
}

// Of a directory without a layout file.
std::string DefaultBase(const std::string& directory) {
  btkFSEntry file(AbsolutePath(directory).c_str());
  file /= kLayoutName;
  return file.GetHead().GetHead().Path().NarrowText();
}

void CheckBase(LoadPoint& loadpoint, Files& files) {
  LayoutFileText* const layout = loadpoint.layout.get();
  if (layout == nullptr || layout->base.empty() || layout->basePath.empty()) return;
  if (files.IsDirectory(layout->basePath)) return;
  std::string shown = ShownPath(loadpoint, layout->basePath);
  if (FileNameOf(shown).empty()) shown = DirectoryOf(shown);
  const std::string parent = DirectoryOf(shown);
  CloseNames close(FileNameOf(shown));
  const std::vector<std::string> names = files.NamesIn(parent);
  for (const std::string& name : names) {
    if (files.IsDirectory(PathIn(parent, name))) close.Offer(name);
  }
  std::string message =
      files.IsFile(shown)
          ? fmt::format("base folder {} is a file", Quoted(layout->base))
          : fmt::format("base folder {} is not there: looked for {}", Quoted(layout->base), shown);
  message += DidYouMean(close.Best(), Quoted);
  layout->findings.push_back(
      Found(Rule::kBaseMissing, kBtkOk, {&layout->source, layout->basePlace}, std::move(message)));
}

}  // namespace

bool FitsProcess(const std::string& path) {
  const btkFSPath converted(path.c_str());
  return std::char_traits<btkWChar>::length(converted.WideText()) < kProcessPathUnits;
}

std::string ShownPath(const LoadPoint& loadpoint, const std::string& path) {
  const std::string& directory = loadpoint.directory.Path();
  const fs::path there = SystemPath(path).lexically_normal();
  if (IsAbsolutePath(directory)) return NarrowPathLike(directory, there);
  const fs::path below = there.lexically_relative(SystemPath(AbsolutePath(directory)));
  if (below.empty()) return NarrowPathLike(directory, there);
  return NarrowPathLike(directory, (SystemPath(directory) / below).lexically_normal());
}

std::unique_ptr<LoadPoint> ReadProcessLoadPoint(const std::string& directory, Files& files) {
  auto loadpoint = std::make_unique<LoadPoint>(LoadPoint::Role::kProcess, directory);
  loadpoint->path = AbsolutePath(directory);
  ReadDirectory(*loadpoint, files);
  return loadpoint;
}

std::unique_ptr<LoadPoint> ReadInstallation(const std::string& directory, Files& files) {
  auto loadpoint = std::make_unique<LoadPoint>(LoadPoint::Role::kInstallation, directory);
  // Where files are looked for without what a layout file says was hardly meant.
  if (!ReadLayoutOf(*loadpoint, files)) loadpoint->path = DefaultBase(directory);
  if (loadpoint->layout != nullptr) {
    loadpoint->path = loadpoint->layout->basePath;
    loadpoint->scope = loadpoint->layout->scope;
  }
  CheckBase(*loadpoint, files);
  ReadDirectory(*loadpoint, files);
  return loadpoint;
}

std::unique_ptr<LoadPoint> ReadSingleFiles(const std::string& directory,
                                           const std::vector<std::string>& paths, Files& files) {
  auto loadpoint = std::make_unique<LoadPoint>(LoadPoint::Role::kUnknown, directory);
  loadpoint->asked = {paths.begin(), paths.end()};
  std::vector<std::string> manifests = ManifestPaths(*loadpoint, files);
  std::vector<std::string> others;
  for (const std::string& path : loadpoint->asked) {
    const auto isNamed = [name = FileNameOf(path)](const std::string& other) {
      return IsSamePath(FileNameOf(other), name);
    };
    const auto place = std::find_if(manifests.begin(), manifests.end(), isNamed);
    if (IsLayoutFile(path)) {
      if (!ReadLayoutOf(*loadpoint, files))
        TellUnreadable(*loadpoint, path, kBtkMissing, CannotBeRead(std::nullopt));
    } else if (place != manifests.end()) {
      *place = path;
    } else {
      others.push_back(path);
    }
  }
  if (!others.empty()) {
    // No load point reads these by themselves. So nobody knows what would be read with them.
    LeaveOpen(*loadpoint);
    manifests = std::move(others);
  }
  CheckBase(*loadpoint, files);
  ReadManifests(*loadpoint, manifests, files);
  return loadpoint;
}

void FindDuplicates(std::vector<std::unique_ptr<LoadPoint>>& loadpoints) {
  for (std::size_t i = 1; i < loadpoints.size(); ++i) {
    LoadPoint& loadpoint = *loadpoints[i];
    if (loadpoint.role != LoadPoint::Role::kInstallation || loadpoint.path.empty()) continue;
    const btkFSPath path(loadpoint.path.c_str());
    const auto isSame = [&](const std::unique_ptr<LoadPoint>& earlier) {
      const btkFSPath other(earlier->path.c_str());
      const btkWChar* const texts[] = {path.WideText(), other.WideText()};
      return earlier->role != LoadPoint::Role::kUnknown &&
             Cmp_cWPaths_Safe(&texts[0], &texts[1]) == 0;
    };
    const auto stop = loadpoints.begin() + static_cast<std::ptrdiff_t>(i);
    const auto same = std::find_if(loadpoints.begin(), stop, isSame);
    if (same == stop) continue;
    loadpoint.isDuplicate = true;
    Finding finding =
        Found(Rule::kDuplicateLoadpoint, kBtkDuplicate, {&loadpoint.directory, {}},
              fmt::format("same base folder as {}: {}", Quoted((*same)->directory.Path()),
                          Quoted(ShownPath(loadpoint, loadpoint.path))));
    finding.related.push_back({{&(*same)->directory, {}}, "the other load point"});
    loadpoint.findings.push_back(std::move(finding));
  }
}

}  // namespace tarnmf::check
