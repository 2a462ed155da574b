// SPDX-License-Identifier: Apache-2.0
// Sentences for the user on standard error.
#ifndef TOOLS_TARNMF_TELL_H
#define TOOLS_TARNMF_TELL_H

#include <fmt/format.h>
#include <string_view>
#include <utility>

namespace tool {

// Each line of it as a terminal may be given it.
void TellSentence(std::string_view sentence);

// After the name of the program, and with a line feed at its end.
template <class... Args>
void Tell(fmt::format_string<Args...> sentence, Args&&... args) {
  TellSentence(fmt::format(sentence, std::forward<Args>(args)...));
}

}  // namespace tool

#endif  // TOOLS_TARNMF_TELL_H
