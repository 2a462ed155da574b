// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/tell.h"

#include <algorithm>
#include <string>

#include "tools/tarnmf/output.h"
#include "tools/tarnmf/printable.h"

namespace tool {

void TellSentence(std::string_view sentence) {
  std::string lines = "tarnmf: ";
  do {
    const std::size_t end = std::min(sentence.find('\n'), sentence.size());
    lines += Printable(sentence.substr(0, end)) + "\n";
    sentence.remove_prefix(std::min(end + 1, sentence.size()));
  } while (!sentence.empty());
  WriteError(lines);
}

}  // namespace tool
