// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/message_queue.h"

#include <algorithm>
#include <utility>

namespace tool::lsp {

void MessageQueue::Push(Incoming message) {
  {
    const std::lock_guard lock(mutex_);
    messages_.push_back(std::move(message));
  }
  filled_.notify_one();
}

std::optional<Incoming> MessageQueue::Pop(std::optional<Clock::time_point> until) {
  std::unique_lock lock(mutex_);
  const auto isFilled = [this] { return !messages_.empty(); };
  if (!until) {
    filled_.wait(lock, isFilled);
  } else if (!filled_.wait_until(lock, *until, isFilled)) {
    return std::nullopt;
  }
  Incoming message = std::move(messages_.front());
  messages_.pop_front();
  return message;
}

bool MessageQueue::Remove(const Json& id) {
  const std::lock_guard lock(mutex_);
  const auto request = std::find_if(messages_.begin(), messages_.end(), [&](const Incoming& each) {
    return each.kind == Incoming::Kind::kMessage && each.json.contains("method") &&
           each.json.contains("id") && each.json["id"] == id;
  });
  if (request == messages_.end()) return false;
  messages_.erase(request);
  return true;
}

}  // namespace tool::lsp
