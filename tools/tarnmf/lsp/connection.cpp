// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/connection.h"

#include <exception>
#include <string>
#include <utility>

#include "tools/tarnmf/lsp/transport.h"

namespace tool::lsp {
Connection::Connection(std::istream& in, std::ostream& out) : in_(in), out_(out) {
  // Standard input flushes standard output while it waits, and knows nothing of the other thread.
  in_.tie(nullptr);
  reader_ = std::thread([this] { ReadAll(); });
}

Connection::~Connection() {
  reader_.join();
}

void Connection::Send(const Json& message) {
  const std::string framed = Framed(message);
  const std::lock_guard lock(outMutex_);
  out_.write(framed.data(), static_cast<std::streamsize>(framed.size()));
  out_.flush();
}

void Connection::ReadAll() {
  while (ReadOne()) {
  }
}

bool Connection::ReadOne() {
  try {
    Frame frame = ReadFrame(in_);
    switch (frame.kind) {
      case Frame::Kind::kEnd:
        queue_.Push({Incoming::Kind::kEnd, {}});
        return false;
      case Frame::Kind::kBroken:
        queue_.Push({Incoming::Kind::kBroken, frame.text});
        return false;
      case Frame::Kind::kMessage:
        return Take(ParseMessage(frame.text));
    }
  } catch (const std::exception& error) {
    queue_.Push({Incoming::Kind::kNoJson, error.what()});
  }
  return true;
}

bool Connection::Take(Json message) {
  const Json& method = Member(message, "method");
  if (method == "$/cancelRequest") {
    const Json& id = Member(message, "params", "id");
    if (queue_.Remove(id))
      Send(ErrorResponse(id, ErrorCode::kCancelled, "the request has been cancelled"));
    return true;
  }
  const bool isLast = method == "exit";
  queue_.Push({Incoming::Kind::kMessage, std::move(message)});
  return !isLast;
}

}  // namespace tool::lsp
