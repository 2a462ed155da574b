// SPDX-License-Identifier: Apache-2.0
// Messages of the language server protocol as they cross a stream: a line "Content-Length: N", other
// header lines, an empty line, and N bytes of JSON.
#ifndef TOOLS_TARNMF_LSP_TRANSPORT_H
#define TOOLS_TARNMF_LSP_TRANSPORT_H

#include <cstddef>
#include <istream>
#include <string>

#include "tools/tarnmf/lsp/protocol.h"

namespace tool::lsp {

// Larger ones are refused rather than waited for.
inline constexpr std::size_t kMostMessageBytes = std::size_t{256} * 1024 * 1024;

struct Frame {
  enum class Kind {
    kMessage,
    kEnd,     // between two messages
    kBroken,  // nobody can tell where the next message begins
  };
  Kind kind;
  std::string text;  // the JSON, or what is wrong, in a sentence
};

// Blocks until a whole message is there.
Frame ReadFrame(std::istream& stream);

// Throws std::exception for what is no JSON.
Json ParseMessage(const std::string& text);

// With its header. What is no UTF-8 in it becomes U+FFFD.
std::string Framed(const Json& message);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_TRANSPORT_H
