// SPDX-License-Identifier: Apache-2.0
// Messages on their way from the thread that reads them to the one that works.
#ifndef TOOLS_TARNMF_LSP_MESSAGE_QUEUE_H
#define TOOLS_TARNMF_LSP_MESSAGE_QUEUE_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>

#include "tools/tarnmf/lsp/protocol.h"

namespace tool::lsp {

using Clock = std::chrono::steady_clock;

struct Incoming {
  enum class Kind {
    kMessage,
    kNoJson,  // `json` is what is wrong, in a sentence
    kBroken,  // likewise, and nothing comes after it
    kEnd,     // nothing comes after it
  };
  Kind kind = Kind::kMessage;
  Json json;
};

class MessageQueue {
 public:
  void Push(Incoming message);

  // Waits for the next one until then, or for ever. Nothing: the time has come and none is there.
  std::optional<Incoming> Pop(std::optional<Clock::time_point> until);

  // Takes out the request of this id. False: none waits.
  bool Remove(const Json& id);

 private:
  std::mutex mutex_;
  std::condition_variable filled_;
  std::deque<Incoming> messages_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_MESSAGE_QUEUE_H
