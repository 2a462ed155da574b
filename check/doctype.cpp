// SPDX-License-Identifier: Apache-2.0
#include "check/doctype.h"

#include <algorithm>

namespace tarnmf::check {
namespace {

// Past the next `what`, or at the end of the text.
std::size_t PastNext(std::string_view text, std::string_view what, std::size_t from) {
  const std::size_t at = text.find(what, from);
  return at != std::string_view::npos ? at + what.size() : text.size();
}

// Past the declaration within the brackets that begins at `at`.
std::size_t EndOfDeclaration(std::string_view text, std::size_t at) {
  while (at < text.size() && text[at] != '>') {
    const char c = text[at++];
    if (c == '"' || c == '\'') at = PastNext(text, std::string_view(&c, 1), at);
  }
  return std::min(at + 1, text.size());
}

// Past the closing bracket; `at` is past the opening one.
std::size_t EndOfSubset(std::string_view text, std::size_t at) {
  while (at < text.size() && text[at] != ']') {
    if (text.substr(at, 4) == "<!--") {
      at = PastNext(text, "-->", at + 4);
    } else if (text.substr(at, 2) == "<?") {
      at = PastNext(text, "?>", at + 2);
    } else if (text[at] == '<') {
      at = EndOfDeclaration(text, at + 1);
    } else {
      ++at;
    }
  }
  return std::min(at + 1, text.size());
}

}  // namespace

std::size_t EndOfDoctype(std::string_view text, std::size_t begin) {
  std::size_t at = begin + 1;
  while (at < text.size() && text[at] != '>' && text[at] != '<') {
    const char c = text[at++];
    if (c == '[') {
      at = EndOfSubset(text, at);
    } else if (c == '"' || c == '\'') {
      at = PastNext(text, std::string_view(&c, 1), at);
    }
  }
  return at < text.size() && text[at] == '>' ? at + 1 : at;
}

}  // namespace tarnmf::check
