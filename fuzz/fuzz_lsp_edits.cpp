// SPDX-License-Identifier: Apache-2.0
// Edits a document through the language server and beside it in the simplest way there is. An input is
// the way in which characters are counted, the text up to a NUL, and then edits of four numbers, a
// length and a text each.
#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utf8.h>
#include <utility>

#include "fuzz/harness.h"
#include "tools/tarnmf/lsp/server.h"

using tarnmf::fuzz::Require;
using tool::lsp::Json;

namespace {

constexpr char kUri[] = "file:///no-such-folder/a.tmfx";

std::u32string CodePoints(std::string_view bytes) {
  std::string valid;
  utf8::replace_invalid(bytes.begin(), bytes.end(), std::back_inserter(valid));
  std::u32string text;
  utf8::utf8to32(valid.begin(), valid.end(), std::back_inserter(text));
  return text;
}

std::string Utf8(std::u32string_view text) {
  std::string bytes;
  utf8::utf32to8(text.begin(), text.end(), std::back_inserter(bytes));
  return bytes;
}

// Walks from the beginning of the text, one character after the other.
class Model {
 public:
  Model(std::u32string text, bool inUtf8) : text_(std::move(text)), inUtf8_(inUtf8) {}

  std::string Text() const { return Utf8(text_); }

  void Replace(std::size_t begin, std::size_t end, std::u32string_view by) {
    if (end < begin) std::swap(begin, end);
    text_.replace(begin, end - begin, by);
  }

  std::size_t At(unsigned line, unsigned character) const {
    std::size_t at = 0;
    for (; line > 0 && at < text_.size(); ++at) {
      if (EndsLine(at)) --line;
    }
    if (line > 0) return text_.size();
    while (at < text_.size() && text_[at] != '\n' && text_[at] != '\r') {
      const unsigned units = UnitsOf(text_[at]);
      if (units > character) break;
      character -= units;
      ++at;
    }
    return at;
  }

 private:
  bool EndsLine(std::size_t at) const {
    return text_[at] == '\n' || (text_[at] == '\r' && text_.substr(at + 1, 1) != U"\n");
  }

  unsigned UnitsOf(char32_t character) const {
    if (inUtf8_) return static_cast<unsigned>(Utf8({&character, 1}).size());
    return character > 0xFFFF ? 2 : 1;
  }

  std::u32string text_;
  const bool inUtf8_;
};

// Hands out an input piece by piece; past its end everything is 0 and empty.
class Input {
 public:
  explicit Input(std::string_view bytes) : bytes_(bytes) {}

  bool IsEmpty() const { return bytes_.empty(); }
  unsigned Number() { return static_cast<unsigned char>(Take(1).append(1, '\0')[0]); }
  std::string Take(std::size_t size) {
    std::string taken(bytes_.substr(0, size));
    bytes_.remove_prefix(taken.size());
    return taken;
  }
  std::string TakeText() {
    std::string text = Take(std::min(bytes_.find('\0'), bytes_.size()));
    Take(1);
    return text;
  }

 private:
  std::string_view bytes_;
};

class Session {
 public:
  Session(bool inUtf8, const std::string& text) : server_({"", {}, false}, [](const Json&) {}) {
    Json capabilities = Json::object();
    if (inUtf8) capabilities["general"]["positionEncodings"] = {"utf-8"};
    Say({{"id", 1}, {"method", "initialize"}, {"params", {{"capabilities", capabilities}}}});
    Say({{"method", "textDocument/didOpen"},
         {"params", {{"textDocument", {{"uri", kUri}, {"version", 1}, {"text", text}}}}}});
  }

  void Change(Json changes) {
    Say({{"method", "textDocument/didChange"},
         {"params", {{"textDocument", {{"uri", kUri}}}, {"contentChanges", std::move(changes)}}}});
  }

  std::string Text() const {
    const auto& documents = server_.OpenDocuments().All();
    const auto document = documents.find(kUri);
    Require(document != documents.end());
    return document->second.text.Text();
  }

  void Check() { server_.Check(); }

 private:
  void Say(Json message) {
    server_.Handle({tool::lsp::Incoming::Kind::kMessage, std::move(message)});
  }

  tool::lsp::Server server_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string input = tarnmf::fuzz::TextOf(bytes, size);
  Input rest(input);
  const bool inUtf8 = rest.Number() % 2 == 1;
  const std::u32string text = CodePoints(rest.TakeText());
  Model model(text, inUtf8);
  Session session(inUtf8, Utf8(text));
  while (!rest.IsEmpty()) {
    const unsigned numbers[] = {rest.Number(), rest.Number(), rest.Number(), rest.Number()};
    const std::u32string by = CodePoints(rest.Take(rest.Number() % 32));
    session.Change({{{"range",
                      {{"start", {{"line", numbers[0]}, {"character", numbers[1]}}},
                       {"end", {{"line", numbers[2]}, {"character", numbers[3]}}}}},
                     {"text", Utf8(by)}}});
    model.Replace(model.At(numbers[0], numbers[1]), model.At(numbers[2], numbers[3]), by);
    Require(session.Text() == model.Text());
  }
  session.Check();
  return 0;
}
