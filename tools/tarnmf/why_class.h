// SPDX-License-Identifier: Apache-2.0
// "tarnmf why class": which class a query finds, and why no other one.
#ifndef TOOLS_TARNMF_WHY_CLASS_H
#define TOOLS_TARNMF_WHY_CLASS_H

#include <cstdint>
#include <string>

#include "tools/tarnmf/checked_process.h"

namespace tool {

struct WhyClassOptions {
  ProcessOptions process;
  std::string name;
  std::string scope;  // empty: none
  std::int16_t version = 0;
  std::int16_t limit = INT16_MAX;
  bool json = false;
};

// Returns the exit status.
int RunWhyClass(const WhyClassOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_WHY_CLASS_H
