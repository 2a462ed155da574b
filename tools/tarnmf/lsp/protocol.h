// SPDX-License-Identifier: Apache-2.0
// The words of the language server protocol that several parts of the server use.
#ifndef TOOLS_TARNMF_LSP_PROTOCOL_H
#define TOOLS_TARNMF_LSP_PROTOCOL_H

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tool::lsp {

using Json = nlohmann::json;

enum class ErrorCode {
  kUnreadable = -32700,
  kInvalidRequest = -32600,
  kMethodNotFound = -32601,
  kInvalidParams = -32602,
  kInternal = -32603,
  kNotInitialized = -32002,
  kCancelled = -32800,
  kFailed = -32803,
};

// What a request is answered with when it cannot be fulfilled.
class RequestError : public std::runtime_error {
 public:
  RequestError(ErrorCode code, const std::string& sentence)
      : std::runtime_error(sentence), code_(code) {}
  ErrorCode Code() const { return code_; }

 private:
  ErrorCode code_;
};

Json Response(const Json& id, Json result);
Json ErrorResponse(const Json& id, ErrorCode code, std::string_view sentence);
Json Notification(std::string_view method, Json params);
Json Call(std::string_view id, std::string_view method, Json params);

// A whole number of a message, negative ones as 0. Throws RequestError for everything else.
std::uint32_t Count(const Json& number);
// Likewise for a text.
const std::string& Text(const Json& text);
// A member of an object, or null.
const Json& Member(const Json& object, std::string_view name);
// A member of a member of a member, or null.
template <class... Names>
const Json& Member(const Json& object, std::string_view name, Names... further) {
  return Member(Member(object, name), further...);
}
// Whether it is there and true.
bool IsTrue(const Json& value);
// Whether an array holds the word.
bool Holds(const Json& array, std::string_view word);

}  // namespace tool::lsp

#endif  // TOOLS_TARNMF_LSP_PROTOCOL_H
