// SPDX-License-Identifier: Apache-2.0
#include "check/values.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#include "platform/runtime.h"

namespace tarnmf::check {
namespace {

using grammar::ValueKind;

constexpr std::size_t kLongestDecimal = 15;
constexpr std::string_view kBlanks = " \t\r\n";

BtkErrorT CodeOfDecimal(const std::string& text, ValueKind kind) {
  const std::optional<Decimal> decimal = ReadDecimal(text);
  if (!decimal) return kBtkMalformed;
  const std::int32_t number = decimal->number;
  switch (kind) {
    case ValueKind::kDecimal16:
      return number >= 0 && number <= std::numeric_limits<std::int16_t>::max() ? kBtkOk
                                                                               : kBtkOutOfRange;
    case ValueKind::kVersion:
      return number == 1 ? kBtkOk : kBtkWrongVersion;
    case ValueKind::kAddressBits:
      return number == 32 || number == 64 ? kBtkOk : kBtkMalformed;
    default:
      return kBtkOk;
  }
}

}  // namespace

std::optional<std::int32_t> ReadKeyword(const std::string& text, const grammar::Words& words) {
  for (const grammar::Word& word : words.list) {
    if (btk_strcasecmp(text.c_str(), word.text) == 0) return word.number;
  }
  return std::nullopt;
}

std::optional<bool> ReadBoolean(const std::string& text) {
  const auto number = ReadKeyword(text, grammar::kBooleanWords);
  return number ? std::optional(*number != 0) : std::nullopt;
}

std::optional<UniIdT> ReadId(const std::string& text) {
  if (text.size() != kBtkUniIdPlainLength && text.size() != kBtkUniIdDashedLength) return {};
  const int form = text.size() == kBtkUniIdPlainLength ? kBtkUniIdPlain : kBtkUniIdDashed;
  UniIdT id{};
  if (btkUniIdParse(&id, text.c_str(), kBtkWholeText, nullptr, form) != kBtkOk) return {};
  return id;
}

std::optional<Decimal> ReadDecimal(const std::string& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  if (text.empty() || text.size() > kLongestDecimal) return {};
  char* end = nullptr;
  const long long parsed = std::strtoll(text.c_str(), &end, 10);
  if (parsed < Limits::min() || parsed > Limits::max()) return {};
  const std::size_t rest =
      text.find_first_not_of(kBlanks, static_cast<std::size_t>(end - text.c_str()));
  return Decimal{static_cast<std::int32_t>(parsed),
                 end != text.c_str() && rest == std::string::npos};
}

bool HasWord(const std::string& text) {
  return text.find_first_not_of(';') != std::string::npos;
}

BtkErrorT CodeOf(const std::string& text, const grammar::AttributeT& attribute) {
  const auto malformedUnless = [](bool isGood) { return isGood ? kBtkOk : kBtkMalformed; };
  switch (attribute.kind) {
    case ValueKind::kKeyword:
      return malformedUnless(ReadKeyword(text, *attribute.words).has_value());
    case ValueKind::kBoolean:
      return malformedUnless(ReadBoolean(text).has_value());
    case ValueKind::kDecimal:
    case ValueKind::kDecimal16:
    case ValueKind::kVersion:
    case ValueKind::kAddressBits:
      return CodeOfDecimal(text, attribute.kind);
    case ValueKind::kUniqueId:
      return malformedUnless(ReadId(text).has_value());
    case ValueKind::kNonEmptyText:
      return malformedUnless(!text.empty());
    case ValueKind::kWordList:
      return malformedUnless(HasWord(text));
    case ValueKind::kRefused:
      return kBtkRefused;
    case ValueKind::kText:
    case ValueKind::kIgnored:
      return kBtkOk;
  }
  return kBtkOk;
}

}  // namespace tarnmf::check
