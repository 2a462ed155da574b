// SPDX-License-Identifier: Apache-2.0
// The load points of a process as check reads them, for commands that explain or draw them. Nothing
// is loaded or registered, and load points that the library refuses are told of, too.
#ifndef TOOLS_TARNMF_CHECKED_PROCESS_H
#define TOOLS_TARNMF_CHECKED_PROCESS_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "check/answers.h"
#include "check/check.h"
#include "check/class_records.h"
#include "check/verdict.h"
#include "tools/tarnmf/action.h"
#include "tools/tarnmf/errors_by_loadpoint.h"

namespace tool {

struct ProcessOptions {
  std::string loadpoint;  // of the process; empty: none
  std::vector<std::string> installations;
};

void AddProcessOptions(CLI::App& command, ProcessOptions& options);

// Throws std::invalid_argument when one of the directories is not there.
void RequireDirectories(const ProcessOptions& options);

class CheckedProcess {
 public:
  // Throws std::invalid_argument when a directory is not there.
  explicit CheckedProcess(const ProcessOptions& options);

  const std::vector<std::unique_ptr<tarnmf::check::LoadPoint>>& LoadPoints() const {
    return report_.loadpoints;
  }
  // By load point.
  const std::vector<std::vector<tarnmf::check::ClassRecord>>& Classes() const { return classes_; }
  // What queries find; classes of refused load points are none of it.
  const tarnmf::check::Answers& Answers() const { return *answers_; }

  bool IsRefused(std::size_t loadpoint) const { return tool::IsRefused(errors_[loadpoint]); }
  // Tells on standard error which load points the library refuses, and why.
  void PrintRefused() const;

 private:
  tarnmf::check::DiskFiles files_;
  tarnmf::check::Report report_;
  std::vector<std::vector<tarnmf::check::ClassRecord>> classes_;
  std::vector<tarnmf::check::Verdict> errors_;  // by load point
  std::unique_ptr<const tarnmf::check::Answers> answers_;
};

// "PATH:LINE:COLUMN".
std::string PlaceText(const tarnmf::check::Place& place);

}  // namespace tool

#endif  // TOOLS_TARNMF_CHECKED_PROCESS_H
