// SPDX-License-Identifier: Apache-2.0
// The load points that are checked together: the process's own and installations.
#ifndef CHECK_INSTALLATION_H
#define CHECK_INSTALLATION_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "check/files.h"
#include "check/finding.h"
#include "check/manifest.h"
#include "platform/unique_id.h"

namespace tarnmf::check {

// What a layout file says, as far as it can be made out.
struct LayoutFileText {
  explicit LayoutFileText(Source text) : source(std::move(text)) {}

  Source source;
  std::string base;  // as it is written; empty: nothing is, and it is the parent of the directory
  Span basePlace;
  // The base as the library would have it. Empty: what is written about it cannot be read.
  std::string basePath;
  UniIdT scope{};
  std::int32_t bits = 0;
  bool isRefused = false;
  std::vector<Finding> findings;
};

// One load point with what is read for it. Findings point into it, so that it stays where it is.
struct LoadPoint {
  enum class Role {
    kProcess,
    kInstallation,
    kUnknown,  // of files that are checked by themselves
  };

  LoadPoint(Role itsRole, std::string directoryPath)
      : role(itsRole), directory(Source::OfDirectory(std::move(directoryPath))) {}

  Role role;
  Source directory;  // where the manifests are, as it was given
  // Below which files are looked for: absolute, as the library would have it. Empty: that is not
  // known.
  std::string path;
  // Of the process's own load point, which relative ones are relative to. Empty: that is not known.
  std::string processPath;
  UniIdT scope{};
  std::unique_ptr<LayoutFileText> layout;  // null: there is no such file
  std::vector<std::shared_ptr<const Manifest>> manifests;
  std::vector<std::unique_ptr<const Source>> unreadable;  // files that are there and cannot be read
  // Whether all of them were read, so that one that is not declared is nowhere.
  bool knowsModules = true;
  bool knowsServices = true;
  bool isComplete = true;  // both
  // The library refuses the load point because an earlier one has its path.
  bool isDuplicate = false;
  // The files that were asked for; empty: all of them. The others only say what is declared.
  std::set<std::string> asked;
  std::vector<Finding> findings;  // about the load point itself
};

// The process's own load point, which is a directory of manifests.
std::unique_ptr<LoadPoint> ReadProcessLoadPoint(const std::string& directory, Files& files);
// An installation, read as it is when it is added to the repository.
std::unique_ptr<LoadPoint> ReadInstallation(const std::string& directory, Files& files);
// Single files of one directory, whose other manifests are read with them.
std::unique_ptr<LoadPoint> ReadSingleFiles(const std::string& directory,
                                           const std::vector<std::string>& paths, Files& files);

// Tells of load points that have the path of an earlier one.
void FindDuplicates(std::vector<std::unique_ptr<LoadPoint>>& loadpoints);

// With its NUL, the path of a process's load point has to fit into this many units.
inline constexpr std::size_t kProcessPathUnits = 261;
bool FitsProcess(const std::string& path);

// A path below the load point, or beside it, as people who named its directory would write it.
std::string ShownPath(const LoadPoint& loadpoint, const std::string& path);

}  // namespace tarnmf::check

#endif  // CHECK_INSTALLATION_H
