// SPDX-License-Identifier: Apache-2.0
// Option switches as they are written on command lines.
#ifndef TOOLS_TARNMF_OPTION_SWITCH_H
#define TOOLS_TARNMF_OPTION_SWITCH_H

#include <cstdint>
#include <string>

#include "platform/unique_id.h"

namespace tool {

struct OptionSwitch {
  UniIdT id;
  std::uint32_t value;
};

// Reads "ID=VALUE"; throws std::invalid_argument with a sentence for people.
OptionSwitch ParseOptionSwitch(const std::string& setting);

}  // namespace tool

#endif  // TOOLS_TARNMF_OPTION_SWITCH_H
