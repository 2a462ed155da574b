// SPDX-License-Identifier: Apache-2.0
// What may stand where a command line wants a value.
#ifndef TOOLS_TARNMF_ARGUMENT_COMPLETION_H
#define TOOLS_TARNMF_ARGUMENT_COMPLETION_H

#include <string>
#include <vector>

#include "tools/tarnmf/command_line.h"

namespace tool {

struct Candidate {
  std::string text;
  std::string description;
};

// Candidates, or paths, which shells know best how to complete.
struct ArgumentCompletion {
  enum class Paths { kNone, kFiles, kDirectories };

  std::vector<Candidate> candidates;
  Paths paths = Paths::kNone;
};

// Values of the line's target, whether they go on what is written of it or not. Manifests are read of
// the load points that stand on the line.
ArgumentCompletion CompleteArgument(const CommandLine& line);

}  // namespace tool

#endif  // TOOLS_TARNMF_ARGUMENT_COMPLETION_H
