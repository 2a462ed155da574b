// SPDX-License-Identifier: Apache-2.0
// Files of which some have a text that is not stored yet.
#ifndef CHECK_EDITED_FILES_H
#define CHECK_EDITED_FILES_H

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/files.h"
#include "check/paths.h"

namespace tarnmf::check {

class EditedFiles final : public Files {
 public:
  // `stored` has to outlive it.
  explicit EditedFiles(Files& stored) : stored_(stored) {}

  // The path is written as everywhere where the file is read.
  void Edit(const std::string& path, std::string bytes);
  // The same for a manifest in an editor, see Source::OfEditedManifest.
  void EditText(const std::string& path, std::string text);
  // Back to what is stored.
  void Drop(const std::string& path) { edited_.erase(path); }

  std::optional<std::string> Read(const std::string& path) override;
  std::shared_ptr<const Manifest> ReadManifest(const std::string& path) override;
  ManifestList ManifestsIn(const std::string& directory) override;
  std::optional<std::string> WhyUnreadable(const std::string& path) override;
  bool IsFile(const std::string& path) override;
  bool IsDirectory(const std::string& path) override { return stored_.IsDirectory(path); }
  std::vector<std::string> NamesIn(const std::string& directory) override {
    return stored_.NamesIn(directory);
  }
  bool AreOnDisk() const override { return edited_.empty() && stored_.AreOnDisk(); }

 private:
  struct EditedFile {
    std::string bytes;
    bool isText = false;
    std::shared_ptr<const Manifest> manifest;  // null until somebody asks for it
  };

  Files& stored_;
  std::map<std::string, EditedFile, PathLess> edited_;
};

}  // namespace tarnmf::check

#endif  // CHECK_EDITED_FILES_H
