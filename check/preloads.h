// SPDX-License-Identifier: Apache-2.0
// Conditions under which libraries are loaded ahead of use.
#ifndef CHECK_PRELOADS_H
#define CHECK_PRELOADS_H

#include <optional>
#include <string>
#include <vector>

#include "check/class_records.h"
#include "check/declared.h"
#include "check/finding.h"
#include "check/installation.h"

namespace tarnmf::check {

// A process that conditions are held against.
struct ProcessDescription {
  std::optional<UniIdT> service;  // that it runs in
  std::string program;            // file name of its executable
  std::vector<UniIdT> options;    // that are on
};

// One part of a condition; all of them have to hold.
struct PreloadPart {
  std::string text;
  bool holds;
};
std::vector<PreloadPart> PartsOf(const PreloadDeclaration& preload,
                                 const ProcessDescription& process);

// Tells of conditions that come to nothing.
void CheckPreloads(const LoadPoint& loadpoint, const Declared& declared,
                   std::vector<Finding>& findings);

}  // namespace tarnmf::check

#endif  // CHECK_PRELOADS_H
