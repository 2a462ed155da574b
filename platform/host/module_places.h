// SPDX-License-Identifier: Apache-2.0
// Where load points lie, and the files of modules in them.
#ifndef PLATFORM_HOST_MODULE_PLACES_H
#define PLATFORM_HOST_MODULE_PLACES_H

#include <map>
#include <string>
#include <vector>

#include "platform/host/embedded_dlm.h"

// The load points that were announced, so that what is resolved later does not depend on the folder
// that is the current one then.
class LoadpointPlaces {
 public:
  // Empty: the process has none.
  void AnnounceProcess(const std::string& path);
  void AnnounceInstallation(const std::string& path);

  // The absolute path of a load point. Empty when it is relative to that of the process, which has
  // none.
  std::string PlaceOf(const std::string& loadpoint) const;
  // The same of any other path.
  std::string BelowProcess(const std::string& path) const;

 private:
  std::string process_;                        // absolute; empty: none
  std::map<std::string, std::string> places_;  // of relative ones, by their paths
};

// What ResolveModule is asked for.
struct ModuleQuestion {
  const char* type;
  const btkWChar* name;
  const btkWChar* path;
  std::uint32_t flags;
  const btkWChar* loadpoint;
  const char* machine;
};

struct ModulePlaces {
  std::vector<std::string> files;  // absolute, in the order in which they are looked for
  btkHostRefusalT refusal = kBtkHostAdmitted;
  std::string reason;  // empty unless refused
};

ModulePlaces PlacesOf(const ModuleQuestion& module, const LoadpointPlaces& loadpoints);

#endif  // PLATFORM_HOST_MODULE_PLACES_H
