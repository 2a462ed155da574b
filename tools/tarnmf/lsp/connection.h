// SPDX-License-Identifier: Apache-2.0
// Both directions of the conversation with an editor.
#ifndef TOOLS_TARNMF_LSP_CONNECTION_H
#define TOOLS_TARNMF_LSP_CONNECTION_H

#include <istream>
#include <mutex>
#include <optional>
#include <ostream>
#include <thread>

#include "tools/tarnmf/lsp/message_queue.h"

namespace tool::lsp {

// A thread of its own reads, so that a request can be cancelled while another one is worked on: one
// that waits is then answered at once, by that thread.
class Connection {
 public:
  Connection(std::istream& in, std::ostream& out);
  // Waits until the input ends or "exit" has come.
  ~Connection();

  std::optional<Incoming> Next(std::optional<Clock::time_point> until) { return queue_.Pop(until); }

  // From either thread. What cannot be written is lost: then nobody listens any more.
  void Send(const Json& message);

 private:
  void ReadAll();
  // Whether another message may come.
  bool ReadOne();
  bool Take(Json message);

  std::istream& in_;
  std::ostream& out_;
  std::mutex outMutex_;
  MessageQueue queue_;
  std::thread reader_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_CONNECTION_H
