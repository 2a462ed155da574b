// SPDX-License-Identifier: Apache-2.0
#include "platform/host/module_places.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "platform/host/path_rules.h"
#include "platform/host/system_names.h"
#include "platform/host/system_path.h"

namespace {

bool IsAbsolute(const std::string& path) {
  return SystemPath(path).is_absolute();
}

// Seen from the current folder; empty when that is gone.
std::string Absolute(const std::string& path) {
  std::error_code error;
  return path.empty() ? path
                      : NarrowPathLike(path, std::filesystem::absolute(SystemPath(path), error));
}

std::string NarrowOf(const btkWChar* text) {
  return btkFSPath(text).NarrowText();
}

bool HasParentComponent(std::string_view path) {
  while (!path.empty()) {
    const auto end = std::find_if(path.begin(), path.end(), [](char byte) {
      return IsPathSeparator(static_cast<unsigned char>(byte));
    });
    const auto length = static_cast<std::size_t>(end - path.begin());
    if (IsParentComponent(path.substr(0, length))) return true;
    path.remove_prefix(std::min(length + 1, path.size()));
  }
  return false;
}

bool IsExecutableType(const char* type) {
  return type != nullptr && btk_strcasecmp(type, kBtkExecutableType) == 0;
}

std::string FileName(const ModuleQuestion& module) {
  std::string plain = NarrowOf(module.name);
  if ((module.flags & kBtkExplicitName) != 0) return plain;
  if (IsExecutableType(module.type)) return plain + kSystemNames.programSuffix;
  if (!btkIsSharedLibType(module.type)) return plain;
  return kSystemNames.libraryPrefix + plain + kSystemNames.librarySuffix;
}

ModulePlaces HasNoBase(const char* what, const std::string& path) {
  return {{},
          kBtkHostHasNoBase,
          std::string(what) + " \"" + path + "\" is relative, and the process has no load point"};
}

}  // namespace

void LoadpointPlaces::AnnounceProcess(const std::string& path) {
  AnnounceInstallation(path);
  process_ = Absolute(path);
}

void LoadpointPlaces::AnnounceInstallation(const std::string& path) {
  if (!path.empty() && !IsAbsolute(path)) places_[path] = Absolute(path);
}

std::string LoadpointPlaces::PlaceOf(const std::string& loadpoint) const {
  const auto announced = places_.find(loadpoint);
  return announced != places_.end() ? announced->second : BelowProcess(loadpoint);
}

std::string LoadpointPlaces::BelowProcess(const std::string& path) const {
  if (IsAbsolute(path)) return path;
  return process_.empty() ? "" : JoinPath({process_, path});
}

ModulePlaces PlacesOf(const ModuleQuestion& module, const LoadpointPlaces& loadpoints) {
  const std::string folder = NarrowOf(module.path);
  const std::string name = FileName(module);
  if ((module.flags & kBtkForcePath) != 0) {
    const std::string directory = loadpoints.BelowProcess(folder);
    if (directory.empty()) return HasNoBase("the forced path", folder);
    return {{JoinPath({directory, name})}, kBtkHostAdmitted, ""};
  }
  const std::string loadpoint = NarrowOf(module.loadpoint);
  if (loadpoint.empty()) return {};
  const std::string file = JoinPath({folder, name});
  if (HasParentComponent(file)) {
    return {{},
            kBtkHostLeadsUp,
            "\"..\" in \"" + file + "\" may lead out of the load point; \"forcepath\" admits it"};
  }
  const std::string root = loadpoints.PlaceOf(loadpoint);
  if (root.empty()) return HasNoBase("the load point", loadpoint);
  const bool native = module.machine == nullptr || *module.machine == '\0';
  return {{JoinPath({root, native ? btkGetVexMachine() : module.machine, file}),
           JoinPath({root, file})},
          kBtkHostAdmitted,
          ""};
}
