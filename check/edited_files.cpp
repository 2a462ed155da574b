#include "check/edited_files.h"

#include <utility>

namespace tarnmf::check {

void EditedFiles::Edit(const std::string& path, std::string bytes) {
  edited_.insert_or_assign(path, EditedText{std::move(bytes), nullptr});
}

std::optional<std::string> EditedFiles::Read(const std::string& path) {
  const auto edited = edited_.find(path);
  return edited != edited_.end() ? std::optional(edited->second.bytes) : stored_.Read(path);
}

std::shared_ptr<const Manifest> EditedFiles::ReadManifest(const std::string& path) {
  const auto edited = edited_.find(path);
  if (edited == edited_.end()) return stored_.ReadManifest(path);
  EditedText& text = edited->second;
  if (text.manifest == nullptr) text.manifest = check::ReadManifest(path, text.bytes);
  return text.manifest;
}

}  // namespace tarnmf::check
