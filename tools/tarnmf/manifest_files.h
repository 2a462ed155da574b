// SPDX-License-Identifier: Apache-2.0
// Manifest files as the commands are given them.
#ifndef TOOLS_TARNMF_MANIFEST_FILES_H
#define TOOLS_TARNMF_MANIFEST_FILES_H

#include <optional>
#include <string>
#include <vector>

#include "tarnmf/ldp_data.h"

#include "platform/errors.h"
#include "platform/filesystem.h"

namespace tool {

// How a load ended: with a code, or with an exception.
struct LoadResult {
  BtkErrorT code = kBtkOk;
  std::optional<std::string> exception;

  bool Failed() const { return code != kBtkOk || exception.has_value(); }
  std::string InWords() const;
};

btkFSList FileList(const std::vector<std::string>& files);

// The names of the "*.tmfx" files of a directory.
std::vector<std::string> ManifestsIn(const std::string& directory);

// Loads the files in order as one load point. `loadpoint` has to outlive `data`.
LoadResult Load(const btkFSList& files, const btkWChar* loadpoint, MfLdpDataT& data);

// What the exception being handled says.
std::string CurrentException();

}  // namespace tool

#endif  // TOOLS_TARNMF_MANIFEST_FILES_H
