// "tarnmf diff": what has changed between two scans.
#ifndef TOOLS_TARNMF_DIFF_COMMAND_H
#define TOOLS_TARNMF_DIFF_COMMAND_H

#include <string>

namespace tool {

struct DiffOptions {
  std::string before;  // files with what "scan --json" has printed
  std::string after;
  bool json = false;
};

// Returns the exit status: 0 for no difference, 1 for some. Throws std::invalid_argument for a file
// that cannot be read.
int RunDiff(const DiffOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_DIFF_COMMAND_H
