// The load points that are checked together: the process's own and installations.
#ifndef CHECK_INSTALLATION_H
#define CHECK_INSTALLATION_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "check/files.h"
#include "check/finding.h"
#include "check/manifest.h"
#include "platform/unique_id.h"

namespace tarnmf::check {

// What a layout file says, as far as it can be made out.
struct LayoutFileText {
  Source source;
  std::string base;  // empty: the parent of the directory
  Span basePlace;
  UniIdT scope{};
  std::int32_t bits = 0;
  bool isRefused = false;
  std::vector<Finding> findings;
};

// One load point with what is read for it.
struct LoadPoint {
  enum class Role {
    kProcess,
    kInstallation,
    kUnknown,  // of files that are checked by themselves
  };
  Role role = Role::kUnknown;
  Source directory;  // where the manifests are, as it was given
  std::string path;  // below which files are looked for: absolute, without "." and ".."
  UniIdT scope{};
  std::unique_ptr<LayoutFileText> layout;  // null: there is no such file
  std::vector<std::shared_ptr<const Manifest>> manifests;
  // Whether everything was read, so that what is not declared is nowhere.
  bool isComplete = true;
};

}  // namespace tarnmf::check

#endif  // CHECK_INSTALLATION_H
