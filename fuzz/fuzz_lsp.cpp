// SPDX-License-Identifier: Apache-2.0
// Talks to the language server: an input is a stream of bytes as it may come from an editor, and each
// of its lines a message in a frame of its own. Whatever is said, every request has one answer.
#include <algorithm>
#include <exception>
#include <optional>
#include <sstream>
#include <string>

#include "fuzz/harness.h"
#include "tools/tarnmf/lsp/server.h"
#include "tools/tarnmf/lsp/transport.h"

using tarnmf::fuzz::Require;
using tool::lsp::Json;

namespace {

// A stream from which nothing more can be read comes to an end.
void ReadFrames(const std::string& input) {
  std::istringstream stream(input);
  std::size_t frames = 0;
  while (tool::lsp::ReadFrame(stream).kind == tool::lsp::Frame::Kind::kMessage)
    ++frames;
  Require(frames <= input.size());
}

std::optional<Json> Message(const std::string& line) {
  Json framed;
  try {
    framed = tool::lsp::ParseMessage(line);
  } catch (const std::exception&) {
    return std::nullopt;
  }
  std::istringstream stream(tool::lsp::Framed(framed));
  const tool::lsp::Frame frame = tool::lsp::ReadFrame(stream);
  Require(frame.kind == tool::lsp::Frame::Kind::kMessage);
  Json message = tool::lsp::ParseMessage(frame.text);
  Require(message == framed);
  return message;
}

bool IsRequest(const Json& message) {
  return message.is_object() && message.contains("id") &&
         tool::lsp::Member(message, "method").is_string();
}

// What the server sends, counted.
struct Answers {
  std::size_t count = 0;

  void operator()(const Json& message) {
    tool::lsp::Framed(message);
    if (!message.contains("method")) ++count;
  }
};

void CheckWhatIsThere(tool::lsp::Server& server) {
  if (server.CheckTime()) server.Check();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string input = tarnmf::fuzz::TextOf(bytes, size);
  ReadFrames(input);
  Answers answers;
  tool::lsp::Server server({"", {}, false}, [&](const Json& message) { answers(message); });
  std::istringstream lines(input);
  std::string line;
  while (!server.IsDone() && std::getline(lines, line)) {
    const std::optional<Json> message = Message(line);
    if (!message) continue;
    const std::size_t before = answers.count;
    server.Handle({tool::lsp::Incoming::Kind::kMessage, *message});
    Require(!IsRequest(*message) || answers.count == before + 1);
    CheckWhatIsThere(server);
  }
  return 0;
}
