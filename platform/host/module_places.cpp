#include "platform/host/module_places.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/host/path_rules.h"

namespace {

namespace fs = std::filesystem;

// Seen from the current folder; empty when that is gone.
std::string Absolute(const std::string& path) {
  std::error_code error;
  return path.empty() ? path : fs::absolute(path, error).string();
}

std::string NarrowOf(const btkWChar* text) {
  return btkFSPath(text).NarrowText();
}

bool HasParentComponent(std::string_view path) {
  while (!path.empty()) {
    const auto end = std::find_if(path.begin(), path.end(), IsPathSeparator<char>);
    const auto length = static_cast<std::size_t>(end - path.begin());
    if (path.substr(0, length) == "..") return true;
    path.remove_prefix(std::min(length + 1, path.size()));
  }
  return false;
}

std::string FileName(const ModuleQuestion& module) {
  std::string plain = NarrowOf(module.name);
  if ((module.flags & kBtkExplicitName) != 0) return plain;
#if defined(_WIN32)
  return plain + (btkIsSharedLibType(module.type) ? ".dll" : ".exe");
#else
  return btkIsSharedLibType(module.type) ? "lib" + plain + ".so" : plain;
#endif
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
  if (!path.empty() && !fs::path(path).is_absolute()) places_[path] = Absolute(path);
}

std::string LoadpointPlaces::PlaceOf(const std::string& loadpoint) const {
  const auto announced = places_.find(loadpoint);
  return announced != places_.end() ? announced->second : BelowProcess(loadpoint);
}

std::string LoadpointPlaces::BelowProcess(const std::string& path) const {
  if (fs::path(path).is_absolute()) return path;
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
