// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/arguments.h"

namespace tool {

std::vector<std::string> Arguments(int count, const char* const* arguments) {
  return {arguments, arguments + count};
}

}  // namespace tool
