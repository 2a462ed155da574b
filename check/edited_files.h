// Files of which some have a text that is not stored yet.
#ifndef CHECK_EDITED_FILES_H
#define CHECK_EDITED_FILES_H

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/files.h"

namespace tarnmf::check {

class EditedFiles final : public Files {
 public:
  // `stored` has to outlive it.
  explicit EditedFiles(Files& stored) : stored_(stored) {}

  void Edit(const std::string& path, std::string bytes);
  // Back to what is stored.
  void Drop(const std::string& path) { edited_.erase(path); }

  std::optional<std::string> Read(const std::string& path) override;
  std::shared_ptr<const Manifest> ReadManifest(const std::string& path) override;
  std::vector<std::string> ManifestsIn(const std::string& directory) override {
    return stored_.ManifestsIn(directory);
  }
  bool IsFile(const std::string& path) override { return stored_.IsFile(path); }
  bool IsDirectory(const std::string& path) override { return stored_.IsDirectory(path); }
  std::vector<std::string> NamesIn(const std::string& directory) override {
    return stored_.NamesIn(directory);
  }
  bool AreOnDisk() const override { return edited_.empty() && stored_.AreOnDisk(); }

 private:
  struct EditedText {
    std::string bytes;
    std::shared_ptr<const Manifest> manifest;  // null until somebody asks for it
  };

  Files& stored_;
  std::map<std::string, EditedText> edited_;
};

}  // namespace tarnmf::check

#endif  // CHECK_EDITED_FILES_H
