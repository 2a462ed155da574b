// SPDX-License-Identifier: Apache-2.0
// The language server: answers the messages of one editor, one after the other.
#ifndef TOOLS_TARNMF_LSP_SERVER_H
#define TOOLS_TARNMF_LSP_SERVER_H

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "check/check.h"
#include "tools/tarnmf/lsp/diagnostics.h"
#include "tools/tarnmf/lsp/documents.h"
#include "tools/tarnmf/lsp/editor.h"
#include "tools/tarnmf/lsp/features.h"
#include "tools/tarnmf/lsp/message_queue.h"
#include "tools/tarnmf/lsp/workspace.h"

namespace tool::lsp {

class Server {
 public:
  using Send = std::function<void(const Json& message)>;

  // `given` are load points that are checked together whatever is open; there may be none.
  Server(const tarnmf::check::Request& given, Send send);

  // Whatever has come; never throws for what it says.
  void Handle(const Incoming& incoming);

  // When to check what has changed: once the editor has paused for a moment, or has gone on for long.
  std::optional<Clock::time_point> CheckTime() const { return checkTime_; }
  // Whether that is not to wait for messages that have come already.
  bool IsCheckOverdue() const;
  // Checks, and sends what is found.
  void Check();

  bool IsDone() const { return isDone_; }
  // 0 if the editor has shut the server down before it went.
  int ExitStatus() const { return state_ == State::kShutDown && !isBroken_ ? 0 : 1; }

  const Documents& OpenDocuments() const { return documents_; }

 private:
  enum class State { kNew, kRunning, kShutDown };

  void HandleMessage(const Json& message);
  void Answer(const Json& id, const std::string& method, const Json& params);
  Json ResultOf(const std::string& method, const Json& params);
  void HandleNotification(const std::string& method, const Json& params);

  Json Initialize(const Json& params);
  void Initialized();
  void DidOpen(const Json& params);
  void DidChange(const Json& params);
  void DidSave(const Json& params);
  void DidClose(const Json& params);
  void DidChangeFiles(const Json& params);

  void CheckAfter(Clock::duration pause);
  void TellSettingsFaults();

  const Send send_;
  Documents documents_;
  Editor editor_{documents_};
  Workspace workspace_;
  Features features_{documents_, editor_, workspace_};
  DiagnosticsPublisher publisher_{editor_, documents_};
  std::set<std::string> toldFaults_;  // of settings
  State state_ = State::kNew;
  bool isDone_ = false;
  bool isBroken_ = false;
  std::optional<Clock::time_point> firstChange_;  // that has not been checked
  std::optional<Clock::time_point> checkTime_;
};

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_SERVER_H
