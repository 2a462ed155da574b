// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/printable.h"

#include <algorithm>
#include <cstddef>

namespace tool {
namespace {

// Controls of 8 bits, ends of lines and paragraphs, and what turns the direction of the text after it.
bool IsOrder(std::string_view character) {
  return (character >= "\xc2\x80" && character <= "\xc2\x9f") ||
         (character >= "\xe2\x80\xa8" && character <= "\xe2\x80\xae") ||
         (character >= "\xe2\x81\xa6" && character <= "\xe2\x81\xa9");
}

// How many bytes the valid UTF-8 character at the beginning takes; 0 when it is none, or one that
// must not reach a terminal.
std::size_t PrintableBytes(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return first >= 0x20 && first != 0x7F ? 1 : 0;
  const std::size_t size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC2 || first > 0xF4 || text.size() < size) return 0;
  if (!std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(size), Continues))
    return 0;
  return IsOrder(text.substr(0, size)) ? 0 : size;
}

}  // namespace

std::string Printable(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    std::size_t bytes = text[0] == '\t' ? 1 : PrintableBytes(text);
    shown.append(bytes > 0 ? text.substr(0, bytes) : "?");
    text.remove_prefix(std::max<std::size_t>(bytes, 1));
  }
  return shown;
}

}  // namespace tool
