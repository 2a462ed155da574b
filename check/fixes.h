// SPDX-License-Identifier: Apache-2.0
// Applies what is certain enough to be applied without a question.
#ifndef CHECK_FIXES_H
#define CHECK_FIXES_H

#include <cstddef>
#include <string>
#include <vector>

#include "check/check.h"
#include "check/finding.h"
#include "check/settings.h"

namespace tarnmf::check {

// The file's bytes after the edits, which do not overlap. A line feed that is put in becomes what
// ends the file's lines; a byte order mark stays. REQUIRES: source.IsUtf8().
std::string Edited(const Source& source, std::vector<Edit> edits);

struct FixedFile {
  std::string path;
  std::string before;
  std::string after;
  std::size_t fixes = 0;  // suggestions that were applied
};

struct FixOutcome {
  std::vector<FixedFile> files;      // those that changed, by their paths
  std::vector<std::string> putBack;  // those that had more errors by it, and so stay as they are
};

// Applies safe suggestions and checks again until there are none left, four times at most. Nothing is
// written.
FixOutcome Fix(const Request& request, Files& files, SettingsFinder& settings,
               const Levels& levels);

}  // namespace tarnmf::check

#endif  // CHECK_FIXES_H
