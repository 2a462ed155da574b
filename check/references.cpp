// SPDX-License-Identifier: Apache-2.0
#include "check/references.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <span>
#include <utf8.h>

namespace tarnmf::check {
namespace {

using namespace std::string_view_literals;

// The bytes of the line end that `text` begins with; 0 when there is none.
std::size_t LineEndSize(std::string_view text, XmlVersion version) {
  const bool is11 = version == XmlVersion::k11;
  if (text.starts_with("\r\n")) return 2;
  if (is11 && text.starts_with("\r\xC2\x85"sv)) return 3;
  if (text.starts_with('\r') || text.starts_with('\n')) return 1;
  if (is11 && text.starts_with("\xC2\x85"sv)) return 2;
  if (is11 && text.starts_with("\xE2\x80\xA8"sv)) return 3;
  return 0;
}

std::string NormaliseLineEnds(std::string_view raw, XmlVersion version, char lineEnd) {
  std::string text;
  text.reserve(raw.size());
  for (std::size_t at = 0; at < raw.size();) {
    const std::size_t size = LineEndSize(raw.substr(at, 3), version);
    text += size > 0 ? lineEnd : raw[at];
    at += std::max<std::size_t>(size, 1);
  }
  return text;
}

// Replaces the references that are known; the others are left out and reported.
bool ReplaceReferences(std::string& text) {
  std::string replaced;
  bool areKnown = true;
  std::size_t at = 0;
  for (;;) {
    const std::size_t begin = text.find('&', at);
    replaced.append(text, at, begin - at);
    if (begin == std::string::npos) break;
    const std::size_t end = text.find_first_of("&;", begin + 1);
    if (end == std::string::npos || text[end] == '&') {
      areKnown = false;
      at = begin + 1;
      continue;
    }
    const auto character =
        ReferredCharacter(std::string_view(text).substr(begin + 1, end - begin - 1));
    if (character) {
      utf8::append(*character, std::back_inserter(replaced));
    } else {
      areKnown = false;
    }
    at = end + 1;
  }
  text = std::move(replaced);
  return areKnown;
}

bool IsCharacter(std::uint32_t value) {
  return value > 0 && value <= 0x10FFFFU && (value < 0xD800U || value > 0xDFFFU);
}

// A character of `characters` becomes the reference at its place in `references`.
std::string Escaped(std::string_view text, std::string_view characters,
                    std::span<const std::string_view> references) {
  std::string escaped;
  for (const char c : text) {
    const std::size_t which = characters.find(c);
    if (which == std::string_view::npos) {
      escaped += c;
    } else {
      escaped += references[which];
    }
  }
  return escaped;
}

}  // namespace

std::optional<char32_t> ReferredCharacter(std::string_view reference) {
  constexpr std::pair<std::string_view, char32_t> kPredefined[] = {
      {"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}};
  if (!reference.starts_with('#')) {
    const auto row = std::find_if(std::begin(kPredefined), std::end(kPredefined),
                                  [&](const auto& each) { return each.first == reference; });
    return row != std::end(kPredefined) ? std::optional(row->second) : std::nullopt;
  }
  const bool isHexadecimal = reference.starts_with("#x");
  const std::string_view digits = reference.substr(isHexadecimal ? 2 : 1);
  std::uint32_t value = 0;
  const char* const last = digits.data() + digits.size();
  const auto [end, error] = std::from_chars(digits.data(), last, value, isHexadecimal ? 16 : 10);
  if (error != std::errc() || end != last || !IsCharacter(value)) return std::nullopt;
  return value;
}

std::string ResolveCData(std::string_view raw, XmlVersion version) {
  if (version == XmlVersion::k10 && raw.find('\r') == std::string_view::npos)
    return std::string(raw);
  return NormaliseLineEnds(raw, version, '\n');
}

std::string ResolveText(std::string_view raw, XmlVersion version) {
  std::string text = ResolveCData(raw, version);
  if (text.find('&') != std::string::npos) ReplaceReferences(text);
  return text;
}

ResolvedValue ResolveValue(std::string_view raw, XmlVersion version) {
  // Most values read as they are written.
  const auto isPlain = [](char c) { return c != '&' && static_cast<unsigned char>(c) >= ' '; };
  if (version == XmlVersion::k10 && std::all_of(raw.begin(), raw.end(), isPlain))
    return {std::string(raw), true};
  ResolvedValue value{NormaliseLineEnds(raw, version, ' '), true};
  std::replace(value.text.begin(), value.text.end(), '\t', ' ');
  if (value.text.find('&') != std::string::npos) value.isKnown = ReplaceReferences(value.text);
  return value;
}

std::string EscapedText(std::string_view text) {
  constexpr std::string_view kReferences[] = {"&amp;", "&lt;", "&gt;"};
  return Escaped(text, "&<>", kReferences);
}

std::string EscapedValue(std::string_view text) {
  constexpr std::string_view kReferences[] = {"&amp;", "&lt;", "&quot;", "&apos;"};
  return Escaped(text, "&<\"'", kReferences);
}

}  // namespace tarnmf::check
