// SPDX-License-Identifier: Apache-2.0
// Checks the load points of one process together.
#ifndef CHECK_CHECK_H
#define CHECK_CHECK_H

#include <memory>
#include <string>
#include <vector>

#include "check/files.h"
#include "check/finding.h"
#include "check/installation.h"
#include "check/manifest.h"

namespace tarnmf::check {

struct Request {
  std::string loadpoint;           // of the process; empty: none is known
  std::vector<std::string> paths;  // installation directories, and single manifest or layout files
  // Whether the library is asked for its verdict, too, where all texts are those of the file system.
  bool asksLibrary = true;
};

// What was read and what was found in it. The findings come file by file in the order of reading, in
// each by their places; allowances and settings have not been applied.
struct Report {
  std::vector<std::unique_ptr<LoadPoint>> loadpoints;
  std::vector<Finding> findings;
};

// `files` is where everything is read from, so that an editor can show its unsaved texts.
Report Check(const Request& request, Files& files);

}  // namespace tarnmf::check

#endif  // CHECK_CHECK_H
