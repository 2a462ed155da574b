// SPDX-License-Identifier: Apache-2.0
// What the open documents belong to: the load points that are checked with them.
#ifndef TOOLS_TARNMF_LSP_WORKSPACE_H
#define TOOLS_TARNMF_LSP_WORKSPACE_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "check/check.h"
#include "check/edited_files.h"
#include "check/paths.h"
#include "check/verdict.h"
#include "tools/tarnmf/lsp/names.h"
#include "tools/tarnmf/lsp/stored_files.h"

namespace tool::lsp {

// Load points that are checked as one process, and what came of it.
struct Process {
  tarnmf::check::Request request;
  tarnmf::check::Report report;
  tarnmf::check::Verdict verdict;
  bool isStale = true;

  // Whether the file is one of a load point, or is checked by itself.
  bool Includes(const std::string& path) const;
};

// A file is known by one path, however the editor writes it: by its name and the path of its directory
// as that was written first.
class Workspace {
 public:
  // `given` are load points that are checked together whatever is open; there may be none.
  explicit Workspace(const tarnmf::check::Request& given);

  // Whether manifests or layout files have such a name. Others are not looked at.
  static bool IsServed(const std::string& path);
  static bool IsManifest(const std::string& path);

  std::string KnownPath(const std::string& written);

  // The text of an open document as it is now.
  void Edit(const std::string& path, const std::string& text);
  // It is closed.
  void Close(const std::string& path);
  // The file may have changed outside the editor, or any of its load point may; without a path, all.
  void Notice(const std::string& path);
  void NoticeAll();

  // Checks what has changed. The directory of each open document is an installation, checked with the
  // load point of the process that its settings name and with the others that name the same.
  void Refresh();
  bool IsStale() const { return isStale_; }

  // As they were at the last refreshment.
  const std::vector<std::unique_ptr<Process>>& Processes() const { return processes_; }
  // The first one that the file belongs to, or null.
  Process* ProcessWith(const std::string& path) const;
  // What is wrong with settings files, in sentences.
  const std::set<std::string>& SettingsFaults() const { return settingsFaults_; }

  // As it is in the editor now; null: there is no such file.
  std::shared_ptr<const tarnmf::check::Manifest> ManifestAt(const std::string& path) {
    return files_.ReadManifest(path);
  }
  LoadPoints ManifestsOf(const Process& process);

  tarnmf::check::Files& Files() { return files_; }

 private:
  // Makes a process of every load point that is to be checked; those that are there stay.
  void Arrange();
  std::vector<tarnmf::check::Request> Wanted();
  std::string LoadPointOf(const std::string& directory);
  std::string KnownDirectory(const std::string& written);

  StoredFiles stored_;
  tarnmf::check::EditedFiles files_{stored_};
  std::map<std::string, std::string, tarnmf::check::PathLess>
      spellings_;  // of directories, by their canonical paths
  tarnmf::check::Request given_;
  std::set<std::string> open_;
  std::vector<std::unique_ptr<Process>> processes_;
  std::set<std::string> settingsFaults_;
  bool isStale_ = false;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_WORKSPACE_H
