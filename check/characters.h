// SPDX-License-Identifier: Apache-2.0
// Characters as the scanner and its helpers sort them. What is no ASCII may be part of a name.
#ifndef CHECK_CHARACTERS_H
#define CHECK_CHARACTERS_H

#include <string_view>

namespace tarnmf::check {

inline constexpr std::string_view kBlanks = " \t\r\n";

inline bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

inline std::string_view Trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == text.npos) return text.substr(0, 0);
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

inline bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

inline char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline bool BeginsName(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' ||
         static_cast<unsigned char>(c) >= 0x80U;
}

inline bool IsOfName(char c) {
  return BeginsName(c) || IsDigit(c) || c == '-' || c == '.';
}

}  // namespace tarnmf::check

#endif  // CHECK_CHARACTERS_H
