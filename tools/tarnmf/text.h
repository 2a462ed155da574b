// SPDX-License-Identifier: Apache-2.0
// Texts and ids of the platform as the tool reads and writes them.
#ifndef TOOLS_TARNMF_TEXT_H
#define TOOLS_TARNMF_TEXT_H

#include <set>
#include <string>

#include "platform/errors.h"
#include "platform/types.h"
#include "platform/unique_id.h"

namespace tool {

using WideString = std::basic_string<btkWChar>;

// Wide text as UTF-8; null is empty.
std::string Narrow(const btkWChar* wide);
inline std::string Narrow(const WideString& wide) {
  return Narrow(wide.c_str());
}
WideString Widen(const std::string& narrow);

// "code 42, unexpected".
std::string CodeName(BtkErrorT code);
// "code 42, unexpected: ...".
std::string CodeInWords(BtkErrorT code);

// The 36-character form.
std::string IdText(const UniIdT& id);

// Reads either text form; throws std::invalid_argument with a sentence for people.
UniIdT ParseId(const std::string& text);

struct IdOrder {
  bool operator()(const UniIdT& left, const UniIdT& right) const {
    return btkUniIdCompare(&left, &right) < 0;
  }
};
using IdSet = std::set<UniIdT, IdOrder>;

}  // namespace tool

#endif  // TOOLS_TARNMF_TEXT_H
