// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/protocol.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tool::lsp {

Json Response(const Json& id, Json result) {
  return {{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}};
}

Json ErrorResponse(const Json& id, ErrorCode code, std::string_view sentence) {
  return {{"jsonrpc", "2.0"},
          {"id", id},
          {"error", {{"code", static_cast<int>(code)}, {"message", sentence}}}};
}

Json Notification(std::string_view method, Json params) {
  return {{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}};
}

Json Call(std::string_view id, std::string_view method, Json params) {
  Json request = Notification(method, std::move(params));
  request["id"] = id;
  return request;
}

std::uint32_t Count(const Json& number) {
  if (!number.is_number_integer())
    throw RequestError(ErrorCode::kInvalidParams, "a whole number is expected");
  if (!number.is_number_unsigned()) return 0;
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(number.get<std::uint64_t>(), kMost));
}

const std::string& Text(const Json& text) {
  if (!text.is_string()) throw RequestError(ErrorCode::kInvalidParams, "a text is expected");
  return text.get_ref<const std::string&>();
}

const Json& Member(const Json& object, std::string_view name) {
  static const Json kNone;
  if (!object.is_object()) return kNone;
  const auto member = object.find(name);
  return member != object.end() ? *member : kNone;
}

bool IsTrue(const Json& value) {
  return value.is_boolean() && value.get<bool>();
}

bool Holds(const Json& array, std::string_view word) {
  return array.is_array() && std::any_of(array.begin(), array.end(), [&](const Json& each) {
           return each.is_string() && each.get_ref<const std::string&>() == word;
         });
}

}  // namespace tool::lsp
