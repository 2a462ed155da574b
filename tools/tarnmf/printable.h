// SPDX-License-Identifier: Apache-2.0
// Texts as terminals may be given them.
#ifndef TOOLS_TARNMF_PRINTABLE_H
#define TOOLS_TARNMF_PRINTABLE_H

#include <string>
#include <string_view>

namespace tool {

// Whether the byte is one of a character of UTF-8, but not its first.
inline bool Continues(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The text with a question mark for whatever a terminal would take as an order, line ends included,
// and for what is no UTF-8. Tabs are kept.
std::string Printable(std::string_view text);

}  // namespace tool

#endif  // TOOLS_TARNMF_PRINTABLE_H
