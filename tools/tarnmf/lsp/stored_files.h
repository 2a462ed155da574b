// SPDX-License-Identifier: Apache-2.0
// The files of the file system for a process that runs long.
#ifndef TOOLS_TARNMF_LSP_STORED_FILES_H
#define TOOLS_TARNMF_LSP_STORED_FILES_H

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/files.h"

namespace tool::lsp {

// A manifest is read again when its file has changed since.
class StoredFiles final : public tarnmf::check::Files {
 public:
  std::optional<std::string> Read(const std::string& path) override { return disk_.Read(path); }
  std::shared_ptr<const tarnmf::check::Manifest> ReadManifest(const std::string& path) override;
  tarnmf::check::ManifestList ManifestsIn(const std::string& directory) override {
    return disk_.ManifestsIn(directory);
  }
  std::optional<std::string> WhyUnreadable(const std::string& path) override {
    return disk_.WhyUnreadable(path);
  }
  bool IsFile(const std::string& path) override { return disk_.IsFile(path); }
  bool IsDirectory(const std::string& path) override { return disk_.IsDirectory(path); }
  std::vector<std::string> NamesIn(const std::string& directory) override {
    return disk_.NamesIn(directory);
  }

  // The file may have changed without having got another size or time.
  void Forget(const std::string& path) { manifests_.erase(path); }
  // Forgets the manifests that nobody else holds.
  void ForgetUnused();

 private:
  struct Stamp {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;

    bool operator==(const Stamp&) const = default;
  };
  struct StoredManifest {
    Stamp stamp;
    std::shared_ptr<const tarnmf::check::Manifest> manifest;
  };

  static std::optional<Stamp> StampOf(const std::string& path);

  tarnmf::check::DiskFiles disk_;  // for what it does not remember
  std::map<std::string, StoredManifest> manifests_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_STORED_FILES_H
