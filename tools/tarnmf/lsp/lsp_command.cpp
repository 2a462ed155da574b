// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/lsp_command.h"

#include <iostream>
#include <memory>
#include <optional>

#include "tools/tarnmf/checked_process.h"
#include "tools/tarnmf/lsp/connection.h"
#include "tools/tarnmf/lsp/server.h"
#include "tools/tarnmf/tell.h"

namespace tool {
namespace {

int RunLsp(const ProcessOptions& options) {
  RequireDirectories(options);
  std::ios::sync_with_stdio(false);
  lsp::Connection connection(std::cin, std::cout);
  lsp::Server server({options.loadpoint, options.installations, false},
                     [&](const lsp::Json& message) { connection.Send(message); });
  while (!server.IsDone()) {
    if (server.IsCheckOverdue()) server.Check();
    if (const std::optional<lsp::Incoming> incoming = connection.Next(server.CheckTime())) {
      if (incoming->kind == lsp::Incoming::Kind::kBroken)
        TellSentence(incoming->json.get_ref<const std::string&>());
      server.Handle(*incoming);
    } else {
      server.Check();
    }
  }
  // An editor that has died reads no more; its end is noticed where it is read from.
  return std::cout ? server.ExitStatus() : 1;
}

}  // namespace

void AddLsp(CLI::App& app, Action& action) {
  CLI::App* const lsp = app.add_subcommand(
      "lsp", "Serve an editor with what check finds, on standard input and output");
  const auto options = std::make_shared<ProcessOptions>();
  AddProcessOptions(*lsp, *options);
  lsp->callback([&action, options] { action = [options] { return RunLsp(*options); }; });
}

}  // namespace tool
