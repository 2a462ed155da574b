// SPDX-License-Identifier: Apache-2.0
#include "check/judged_text.h"

#include <algorithm>
#include <cstdint>
#include <utf8.h>

#include "check/encoding.h"

namespace tarnmf::check {
namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// What may begin a name in XML 1.1, and what else may stand in one; ASCII aside.
constexpr Range kNameBegins[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},
                                 {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D},
                                 {0x2070, 0x218F}, {0x2C00, 0x2FEF}, {0x3001, 0xD7FF},
                                 {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range kNameParts[] = {{0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t N>
bool IsIn(const Range (&ranges)[N], char32_t c) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [c](Range range) { return c >= range.first && c <= range.last; });
}

// Another name for every character, as long as it is in UTF-8. Lower-case letters begin no such name,
// so that none becomes the name of a predefined entity.
constexpr std::string_view kFirst = "ABCDEFGHIJKLMNOPQRSTUVWXYZ_";
constexpr std::string_view kFollowing =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";

std::string AsciiName(char32_t c, std::size_t size, bool begins) {
  std::string name(size, '.');
  auto rest = static_cast<std::uint32_t>(c);
  for (std::size_t i = size - 1; i > 0; --i) {
    name[i] = kFollowing[rest % kFollowing.size()];
    rest /= static_cast<std::uint32_t>(kFollowing.size());
  }
  if (begins) name[0] = kFirst[rest % kFirst.size()];
  return name;
}

// What stands for a character outside ASCII, of `size` bytes.
std::string Substitute(char32_t c, std::string_view bytes, XmlVersion version) {
  const bool is11 = version == XmlVersion::k11;
  if (is11 && (c == 0x85 || c == 0x2028)) return std::string(bytes.size(), ' ');
  if (is11 && c < 0xA0) return std::string(bytes.size(), '\x01');
  if (IsIn(kNameBegins, c)) return AsciiName(c, bytes.size(), true);
  if (IsIn(kNameParts, c)) return AsciiName(c, bytes.size(), false);
  return std::string(bytes);
}

void ReplaceCharacters(std::string_view text, XmlVersion version, std::string& judged) {
  for (auto at = text.begin(); at != text.end();) {
    const auto begin = at;
    const char32_t c = utf8::unchecked::next(at);
    if (c == 0x7F && version == XmlVersion::k11) {
      judged += '\x01';
    } else if (c < 0x80) {
      judged += *begin;
    } else {
      judged += Substitute(c,
                           text.substr(static_cast<std::size_t>(begin - text.begin()),
                                       static_cast<std::size_t>(at - begin)),
                           version);
    }
  }
}

// "&#1;" is a character in XML 1.1: "&#9;" is one in both.
void ReplaceControlReferences(std::string& text) {
  for (std::size_t at = 0; (at = text.find("&#", at)) != std::string::npos; at += 2) {
    const std::size_t end = text.find_first_not_of("#x0123456789abcdefABCDEF", at + 1);
    if (end == std::string::npos) return;
    const std::string_view reference(text.data() + at + 1, end - at - 1);
    const auto character = ReferredCharacter(reference);
    if (!character || (*character >= 0x20 && *character != 0xFFFE)) continue;
    const std::size_t digits = at + (reference.starts_with("#x") ? 3 : 2);
    std::fill(text.begin() + static_cast<std::ptrdiff_t>(digits),
              text.begin() + static_cast<std::ptrdiff_t>(end - 1), '0');
    text[end - 1] = '9';
  }
}

}  // namespace

std::string JudgedText(std::string_view text, XmlVersion version) {
  std::string judged;
  judged.reserve(text.size());
  // The XML declaration has to be in ASCII, in every version.
  const std::size_t end = text.starts_with("<?xml") ? text.find("?>") : 0;
  judged = text.substr(0, end);
  ReplaceCharacters(text.substr(judged.size()), version, judged);
  if (version == XmlVersion::k10) return judged;
  ReplaceControlReferences(judged);
  const Span number = DeclaredValue(judged, "version");
  if (number.Size() == 3) judged[number.end - 1] = '0';
  return judged;
}

}  // namespace tarnmf::check
