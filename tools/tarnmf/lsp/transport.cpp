// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/transport.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <fmt/format.h>
#include <optional>
#include <string_view>
#include <utility>

#include "check/characters.h"
#include "check/names.h"

namespace tool::lsp {
namespace {

constexpr std::size_t kMostHeaderBytes = 4096;
constexpr std::size_t kPiece = std::size_t{64} * 1024;

Frame Broken(std::string sentence) {
  return {Frame::Kind::kBroken, std::move(sentence)};
}

// The lines before the body, with the empty one that ends them.
Frame ReadHeader(std::istream& stream) {
  std::string header;
  while (!header.ends_with("\r\n\r\n") && !header.ends_with("\n\n")) {
    const int character = stream.get();
    if (character == std::istream::traits_type::eof()) {
      return header.empty() ? Frame{Frame::Kind::kEnd, ""}
                            : Broken("the input breaks off in the header of a message");
    }
    if (header.size() == kMostHeaderBytes) return Broken("the header of a message has no end");
    header += static_cast<char>(character);
  }
  return {Frame::Kind::kMessage, std::move(header)};
}

std::optional<std::size_t> ContentLength(std::string_view header) {
  while (!header.empty()) {
    const std::string_view line = header.substr(0, header.find('\n'));
    header.remove_prefix(std::min(line.size() + 1, header.size()));
    const std::size_t colon = line.find(':');
    if (colon == line.npos) continue;
    if (tarnmf::check::Folded(tarnmf::check::Trimmed(line.substr(0, colon))) != "content-length")
      continue;
    const std::string_view number = tarnmf::check::Trimmed(line.substr(colon + 1));
    std::size_t length = 0;
    const char* const last = number.data() + number.size();
    const auto [end, failure] = std::from_chars(number.data(), last, length);
    if (failure == std::errc() && end == last && !number.empty()) return length;
    return std::nullopt;
  }
  return std::nullopt;
}

// Deeper ones are no messages of the protocol, and would take the stack with them.
constexpr int kMostDepth = 200;

class TooDeep : public std::exception {
 public:
  const char* what() const noexcept override { return "the message is nested too deeply"; }
};

}  // namespace

Frame ReadFrame(std::istream& stream) {
  Frame header = ReadHeader(stream);
  if (header.kind != Frame::Kind::kMessage) return header;
  const std::optional<std::size_t> length = ContentLength(header.text);
  if (!length) return Broken("the header of a message tells no length");
  if (*length > kMostMessageBytes)
    return Broken(fmt::format("a message of {} bytes is longer than is read", *length));
  // Only what has come takes memory, whatever the header promises.
  std::string body;
  while (body.size() < *length) {
    const std::size_t begin = body.size();
    body.resize(begin + std::min(kPiece, *length - begin));
    stream.read(body.data() + begin, static_cast<std::streamsize>(body.size() - begin));
    if (!stream) return Broken("the input breaks off in a message");
  }
  return {Frame::Kind::kMessage, std::move(body)};
}

Json ParseMessage(const std::string& text) {
  return Json::parse(text, [](int depth, Json::parse_event_t, Json&) {
    if (depth > kMostDepth) throw TooDeep();
    return true;
  });
}

std::string Framed(const Json& message) {
  const std::string body = message.dump(-1, ' ', false, Json::error_handler_t::replace);
  return fmt::format("Content-Length: {}\r\n\r\n{}", body.size(), body);
}

}  // namespace tool::lsp
