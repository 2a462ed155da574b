// SPDX-License-Identifier: Apache-2.0
// Lines of text reports on standard output.
#ifndef TOOLS_TARNMF_SHOW_TEXT_H
#define TOOLS_TARNMF_SHOW_TEXT_H

#include <fmt/format.h>
#include <string_view>
#include <type_traits>

#include "tools/tarnmf/printable.h"

namespace tool {

// A text without what terminals take as an order; everything else as it is.
template <class Value>
auto AsPrintable(const Value& value) {
  if constexpr (std::is_convertible_v<const Value&, std::string_view>) {
    return Printable(value);
  } else {
    return value;
  }
}

// Names come from documents and may hold anything: their line ends must not look like the report's.
template <class... Args>
void ShowText(fmt::format_string<Args...> text, Args&&... args) {
  fmt::print(fmt::runtime(text), AsPrintable(args)...);
}

}  // namespace tool

#endif  // TOOLS_TARNMF_SHOW_TEXT_H
