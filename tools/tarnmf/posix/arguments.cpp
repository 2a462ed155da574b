#include "tools/tarnmf/arguments.h"

namespace tool {

std::vector<std::string> Arguments(int count, const char* const* arguments) {
  return {arguments, arguments + count};
}

}  // namespace tool
