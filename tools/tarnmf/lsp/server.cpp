// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/server.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "tools/tarnmf/file_uri.h"
#include "tools/tarnmf/lsp/code_actions.h"

namespace tool::lsp {
namespace {

using namespace std::chrono_literals;

// As long as somebody types, nothing is checked but what is there after this long.
constexpr Clock::duration kPause = 150ms;
constexpr Clock::duration kLongest = 1s;

constexpr int kIncremental = 2;  // way of telling changes
constexpr int kWarning = 2;      // type of a message

std::int64_t VersionIn(const Json& document, std::int64_t otherwise) {
  const Json& version = Member(document, "version");
  return version.is_number_integer() ? version.get<std::int64_t>() : otherwise;
}

Json Capabilities(const Abilities& abilities) {
  const bool isUtf8 = abilities.encoding == PositionEncoding::kUtf8;
  return {
      {"positionEncoding", isUtf8 ? "utf-8" : "utf-16"},
      {"textDocumentSync",
       {{"openClose", true}, {"change", kIncremental}, {"save", {{"includeText", false}}}}},
      {"completionProvider", {{"triggerCharacters", {"<", "/", "\"", "'", " "}}}},
      {"hoverProvider", true},
      {"definitionProvider", true},
      {"referencesProvider", true},
      {"renameProvider", abilities.prepareRename ? Json{{"prepareProvider", true}} : Json(true)},
      {"documentSymbolProvider", true},
      {"workspaceSymbolProvider", true},
      {"codeActionProvider", {{"codeActionKinds", {"quickfix", kFixAllKind}}}},
  };
}

Json WatcherRegistration() {
  Json watchers = Json::array();
  for (const char* const pattern : {"**/*.tmfx", "**/.installed", "**/.tarnmf-check"})
    watchers.push_back({{"globPattern", pattern}});
  return {{"registrations",
           {{{"id", "watched-files"},
             {"method", "workspace/didChangeWatchedFiles"},
             {"registerOptions", {{"watchers", std::move(watchers)}}}}}}};
}

}  // namespace

Server::Server(const tarnmf::check::Request& given, Send send)
    : send_(std::move(send)), workspace_(given) {}

// ---- Messages -----------------------------------------------------------------------------------

void Server::Handle(const Incoming& incoming) {
  switch (incoming.kind) {
    case Incoming::Kind::kMessage:
      return HandleMessage(incoming.json);
    case Incoming::Kind::kNoJson:
      return send_(ErrorResponse({}, ErrorCode::kUnreadable, incoming.json.get<std::string>()));
    case Incoming::Kind::kBroken:
      send_(ErrorResponse({}, ErrorCode::kUnreadable, incoming.json.get<std::string>()));
      isBroken_ = true;
      [[fallthrough]];
    case Incoming::Kind::kEnd:
      isDone_ = true;
  }
}

void Server::HandleMessage(const Json& message) {
  const Json& id = Member(message, "id");
  const Json& method = Member(message, "method");
  const bool isResponse = message.is_object() && !message.contains("method");
  if (isResponse && (message.contains("result") || message.contains("error"))) return;
  if (!method.is_string() || (!id.is_null() && !id.is_string() && !id.is_number()))
    return send_(ErrorResponse({}, ErrorCode::kInvalidRequest, "this is no request"));
  const Json& params = Member(message, "params");
  if (message.contains("id")) {
    Answer(id, method.get<std::string>(), params);
  } else {
    HandleNotification(method.get<std::string>(), params);
  }
}

void Server::Answer(const Json& id, const std::string& method, const Json& params) {
  try {
    send_(Response(id, ResultOf(method, params)));
  } catch (const RequestError& error) {
    send_(ErrorResponse(id, error.Code(), error.what()));
  } catch (const Json::exception& error) {
    send_(ErrorResponse(id, ErrorCode::kInvalidParams, error.what()));
  } catch (const std::exception& error) {
    send_(ErrorResponse(id, ErrorCode::kInternal, error.what()));
  }
}

Json Server::ResultOf(const std::string& method, const Json& params) {
  if (state_ == State::kShutDown)
    throw RequestError(ErrorCode::kInvalidRequest, "the server has been shut down");
  if (state_ == State::kNew && method != "initialize")
    throw RequestError(ErrorCode::kNotInitialized, "the server has not been initialized");
  if (method == "initialize") return Initialize(params);
  if (method == "shutdown") {
    state_ = State::kShutDown;
    return nullptr;
  }
  return features_.Answer(method, params);
}

void Server::HandleNotification(const std::string& method, const Json& params) {
  if (method == "exit") isDone_ = true;
  if (state_ != State::kRunning) return;
  constexpr std::pair<std::string_view, void (Server::*)(const Json&)> kHandlers[] = {
      {"textDocument/didOpen", &Server::DidOpen},
      {"textDocument/didChange", &Server::DidChange},
      {"textDocument/didSave", &Server::DidSave},
      {"textDocument/didClose", &Server::DidClose},
      {"workspace/didChangeWatchedFiles", &Server::DidChangeFiles},
  };
  try {
    if (method == "initialized") return Initialized();
    for (const auto& [name, handler] : kHandlers) {
      if (name == method) (this->*handler)(params);
    }
  } catch (const std::exception& error) {
    // Nobody waits for an answer to a notification.
    send_(Notification("window/logMessage",
                       {{"type", kWarning}, {"message", method + ": " + error.what()}}));
  }
}

Json Server::Initialize(const Json& params) {
  if (state_ != State::kNew)
    throw RequestError(ErrorCode::kInvalidRequest, "the server has been initialized already");
  state_ = State::kRunning;
  editor_.abilities = Abilities::Of(Member(params, "capabilities"));
  return {{"capabilities", Capabilities(editor_.abilities)},
          {"serverInfo", {{"name", "tarnmf"}, {"version", TARNMF_VERSION}}}};
}

void Server::Initialized() {
  if (editor_.abilities.registersWatchers)
    send_(Call("watched-files", "client/registerCapability", WatcherRegistration()));
  CheckAfter(0ms);
}

// ---- Texts --------------------------------------------------------------------------------------

void Server::DidOpen(const Json& params) {
  const Json& told = Member(params, "textDocument");
  const std::string& uri = Text(Member(told, "uri"));
  const std::optional<std::string> path = PathOfUri(uri);
  if (!path || !Workspace::IsServed(*path)) return;
  const OpenDocument& document =
      documents_.Open({uri, workspace_.KnownPath(*path), VersionIn(told, 0),
                       TextDocument(Text(Member(told, "text")))});
  workspace_.Edit(document.path, document.text.Text());
  CheckAfter(0ms);
}

void Server::DidChange(const Json& params) {
  const Json& told = Member(params, "textDocument");
  OpenDocument* const document = documents_.Find(Text(Member(told, "uri")));
  if (document == nullptr) return;
  for (const Json& change : Member(params, "contentChanges")) {
    const std::string& text = Text(Member(change, "text"));
    if (change.contains("range")) {
      document->text.Replace(ReadRange(change["range"]), text, editor_.abilities.encoding);
    } else {
      document->text = TextDocument(text);
    }
  }
  document->version = VersionIn(told, document->version + 1);
  workspace_.Edit(document->path, document->text.Text());
  CheckAfter(kPause);
}

// Whatever else may have changed meanwhile: not every editor tells of files that it has not open.
void Server::DidSave(const Json& /*params*/) {
  workspace_.NoticeAll();
  CheckAfter(0ms);
}

void Server::DidClose(const Json& params) {
  const std::string& uri = Text(Member(params, "textDocument", "uri"));
  const OpenDocument* const document = documents_.Find(uri);
  if (document == nullptr) return;
  const std::string path = document->path;
  documents_.Close(uri);
  const auto others = documents_.OfPath(path);
  if (others.empty()) {
    workspace_.Close(path);
  } else {
    workspace_.Edit(path, others.front()->text.Text());
  }
  CheckAfter(0ms);
}

void Server::DidChangeFiles(const Json& params) {
  for (const Json& change : Member(params, "changes")) {
    if (const std::optional<std::string> path = PathOfUri(Text(Member(change, "uri"))))
      workspace_.Notice(workspace_.KnownPath(*path));
  }
  workspace_.NoticeAll();
  CheckAfter(0ms);
}

// ---- Findings -----------------------------------------------------------------------------------

void Server::CheckAfter(Clock::duration pause) {
  const Clock::time_point now = Clock::now();
  if (!firstChange_) firstChange_ = now;
  checkTime_ = std::min(now + pause, *firstChange_ + kLongest);
}

bool Server::IsCheckOverdue() const {
  return firstChange_ && Clock::now() >= *firstChange_ + kLongest;
}

void Server::Check() {
  firstChange_.reset();
  checkTime_.reset();
  workspace_.Refresh();
  publisher_.Publish(workspace_, [this](Json params) {
    send_(Notification("textDocument/publishDiagnostics", std::move(params)));
  });
  TellSettingsFaults();
}

void Server::TellSettingsFaults() {
  for (const std::string& fault : workspace_.SettingsFaults()) {
    if (!toldFaults_.contains(fault))
      send_(Notification("window/showMessage", {{"type", kWarning}, {"message", fault}}));
  }
  toldFaults_ = workspace_.SettingsFaults();
}

}  // namespace tool::lsp
