// SPDX-License-Identifier: Apache-2.0
// Text that is inserted with places to be filled in, in the syntax of the protocol or plain.
#ifndef TOOLS_TARNMF_LSP_SNIPPET_H
#define TOOLS_TARNMF_LSP_SNIPPET_H

#include <span>
#include <string>
#include <string_view>

namespace tool::lsp {

class Snippet {
 public:
  // Otherwise it has no places, only what they are filled with at first.
  explicit Snippet(bool hasPlaces) : hasPlaces_(hasPlaces) {}

  Snippet& Write(std::string_view text);
  Snippet& Place();
  Snippet& Place(std::string_view filling);
  // REQUIRES: there are choices; the first one is the filling.
  Snippet& Choice(std::span<const std::string> choices);
  // Where one goes on at last.
  Snippet& LastPlace();

  const std::string& Text() const { return text_; }

 private:
  void Append(std::string_view text, std::string_view special);

  std::string text_;
  int places_ = 0;
  const bool hasPlaces_;
};

// The text as it is written in an attribute's value.
std::string InQuotes(std::string_view text, char quote);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_SNIPPET_H
