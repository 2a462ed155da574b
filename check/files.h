// SPDX-License-Identifier: Apache-2.0
// Where files are read from.
#ifndef CHECK_FILES_H
#define CHECK_FILES_H

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/manifest.h"

namespace tarnmf::check {

// The "*.tmfx" files of a directory.
struct ManifestList {
  struct Unlisted {
    std::string path;  // of what cannot be listed or is no file; of the directory itself, too
    std::string why;
  };

  std::vector<std::string> names;  // not paths; sorted
  std::vector<Unlisted> unlisted;
};

class Files {
 public:
  virtual ~Files() = default;

  // Nothing when the file cannot be read, or has more than a gigabyte.
  virtual std::optional<std::string> Read(const std::string& path) = 0;
  // The file read and checked by itself; null when it cannot be read.
  virtual std::shared_ptr<const Manifest> ReadManifest(const std::string& path) = 0;
  virtual ManifestList ManifestsIn(const std::string& directory) = 0;
  // Why something that is there cannot be read as a file. Nothing: it is not there, or can be.
  virtual std::optional<std::string> WhyUnreadable(const std::string& path) = 0;
  virtual bool IsFile(const std::string& path) = 0;
  virtual bool IsDirectory(const std::string& path) = 0;
  // The names in a directory, for suggestions.
  virtual std::vector<std::string> NamesIn(const std::string& directory) = 0;
  // Whether the library, which opens files by itself, would read the same.
  virtual bool AreOnDisk() const { return false; }
};

// Those of the file system. A manifest is read once: after files have changed, make a new object.
class DiskFiles final : public Files {
 public:
  std::optional<std::string> Read(const std::string& path) override;
  std::shared_ptr<const Manifest> ReadManifest(const std::string& path) override;
  ManifestList ManifestsIn(const std::string& directory) override;
  std::optional<std::string> WhyUnreadable(const std::string& path) override;
  bool IsFile(const std::string& path) override;
  bool IsDirectory(const std::string& path) override;
  std::vector<std::string> NamesIn(const std::string& directory) override;
  bool AreOnDisk() const override { return true; }

 private:
  std::map<std::string, std::shared_ptr<const Manifest>> manifests_;  // by path, null: unreadable
};

}  // namespace tarnmf::check

#endif  // CHECK_FILES_H
