// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/snippet.h"

#include <fmt/format.h>

namespace tool::lsp {
namespace {

constexpr std::string_view kSpecial = "\\$}";
constexpr std::string_view kSpecialInChoices = "\\$},|";

}  // namespace

void Snippet::Append(std::string_view text, std::string_view special) {
  for (const char c : text) {
    if (hasPlaces_ && special.find(c) != special.npos) text_ += '\\';
    text_ += c;
  }
}

Snippet& Snippet::Write(std::string_view text) {
  Append(text, kSpecial);
  return *this;
}

Snippet& Snippet::Place() {
  if (hasPlaces_) text_ += fmt::format("${}", ++places_);
  return *this;
}

Snippet& Snippet::Place(std::string_view filling) {
  if (!hasPlaces_) return Write(filling);
  text_ += fmt::format("${{{}:", ++places_);
  Write(filling);
  text_ += '}';
  return *this;
}

Snippet& Snippet::Choice(std::span<const std::string> choices) {
  if (!hasPlaces_) return Write(choices.front());
  text_ += fmt::format("${{{}", ++places_);
  char separator = '|';
  for (const std::string& choice : choices) {
    text_ += separator;
    Append(choice, kSpecialInChoices);
    separator = ',';
  }
  text_ += "|}";
  return *this;
}

Snippet& Snippet::LastPlace() {
  if (hasPlaces_) text_ += "$0";
  return *this;
}

std::string InQuotes(std::string_view text, char quote) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == quote || c == '\t' || c == '\n' || c == '\r') {
      escaped += fmt::format("&#{};", static_cast<int>(c));
    } else {
      escaped += c;
    }
  }
  return escaped;
}

}  // namespace tool::lsp
