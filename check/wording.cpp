// SPDX-License-Identifier: Apache-2.0
#include "check/wording.h"

#include <fmt/format.h>

namespace tarnmf::check {
namespace {

constexpr std::size_t kLongest = 60;  // bytes shown of a text

// Cut between two code points; control characters as escapes.
std::string Shown(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isWithin = (byte & 0xc0) == 0x80;
    if (shown.size() >= kLongest && !isWithin) return shown + "…";
    if (c == '\n') {
      shown += "\\n";
    } else if (c == '\r') {
      shown += "\\r";
    } else if (c == '\t') {
      shown += "\\t";
    } else if (byte < 0x20 || byte == 0x7f) {
      shown += fmt::format("\\x{:02x}", byte);
    } else {
      shown += c;
    }
  }
  return shown;
}

}  // namespace

std::string Quoted(std::string_view text) {
  return fmt::format("\"{}\"", Shown(text));
}

std::string Assigned(std::string_view name, std::string_view value) {
  return fmt::format("{}={}", Shown(name), Quoted(value));
}

std::string Tagged(std::string_view name) {
  return fmt::format("<{}>", Shown(name));
}

std::string Listed(std::span<const std::string> items, std::string_view word) {
  std::string list;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const bool isLast = i + 1 == items.size();
    if (i > 0) list += isLast ? fmt::format(" {} ", word) : ", ";
    list += items[i];
  }
  return list;
}

std::string DidYouMean(std::span<const std::string_view> names,
                       std::string (*show)(std::string_view)) {
  if (names.empty()) return {};
  std::vector<std::string> shown;
  for (const std::string_view name : names)
    shown.push_back(show(name));
  return fmt::format("; did you mean {}?", Listed(shown, "or"));
}

}  // namespace tarnmf::check
