// SPDX-License-Identifier: Apache-2.0
#include "check/edited_files.h"

#include <algorithm>
#include <utility>

namespace tarnmf::check {

void EditedFiles::Edit(const std::string& path, std::string bytes) {
  edited_.insert_or_assign(path, EditedFile{std::move(bytes), false, nullptr});
}

void EditedFiles::EditText(const std::string& path, std::string text) {
  edited_.insert_or_assign(path, EditedFile{std::move(text), true, nullptr});
}

std::optional<std::string> EditedFiles::Read(const std::string& path) {
  const auto edited = edited_.find(path);
  return edited != edited_.end() ? std::optional(edited->second.bytes) : stored_.Read(path);
}

std::shared_ptr<const Manifest> EditedFiles::ReadManifest(const std::string& path) {
  const auto edited = edited_.find(path);
  if (edited == edited_.end()) return stored_.ReadManifest(path);
  EditedFile& file = edited->second;
  if (file.manifest == nullptr) {
    file.manifest = check::ReadManifest(file.isText ? Source::OfEditedManifest(path, file.bytes)
                                                    : Source::OfManifest(path, file.bytes));
  }
  return file.manifest;
}

// With those that are not stored yet, and with the names by which they are edited.
ManifestList EditedFiles::ManifestsIn(const std::string& directory) {
  ManifestList list = stored_.ManifestsIn(directory);
  std::vector<std::string>& names = list.names;
  for (const auto& [path, file] : edited_) {
    std::string name = FileNameOf(path);
    if (!IsManifestFile(path) || !IsSamePath(PathIn(directory, name), path)) continue;
    std::erase_if(names, [&](const std::string& stored) { return IsSamePath(stored, name); });
    names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  std::erase_if(list.unlisted, [this](const ManifestList::Unlisted& unlisted) {
    return edited_.contains(unlisted.path);
  });
  return list;
}

std::optional<std::string> EditedFiles::WhyUnreadable(const std::string& path) {
  return edited_.contains(path) ? std::nullopt : stored_.WhyUnreadable(path);
}

bool EditedFiles::IsFile(const std::string& path) {
  return edited_.contains(path) || stored_.IsFile(path);
}

}  // namespace tarnmf::check
