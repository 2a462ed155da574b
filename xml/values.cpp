// SPDX-License-Identifier: Apache-2.0
#include "xml/values.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "platform/runtime.h"
#include "platform/text.h"
#include "xml/readers.h"

namespace tarnmf {
namespace {

constexpr std::size_t kDecimalSize = 16;

// Converts a value that is short by its nature; one that does not fit cannot be right.
BtkErrorT ToShortText(const btkWChar* text, char* buffer, std::size_t size,
                      std::size_t* length = nullptr) {
  if (text == nullptr) return kBtkMalformed;
  const BtkErrorT e = btkStrUtf16ToUtf8(buffer, size, length, text, kBtkWholeText);
  return e == kBtkTooLong ? kBtkMalformed : e;
}

}  // namespace

const std::int32_t* FindWord(const char* text, const grammar::Words& words) {
  for (const grammar::Word& word : words.list) {
    if (btk_strcasecmp(text, word.text) == 0) return &word.number;
  }
  return nullptr;
}

BtkErrorT ReadKeyword(const btkWChar* text, const grammar::Words& words, std::int32_t& number) {
  char value[grammar::Words::kLargestBuffer];
  if (BtkErrorT e = ToShortText(text, value, words.bufferSize)) return e;
  const std::int32_t* const found = FindWord(value, words);
  if (found == nullptr) return kBtkMalformed;
  number = *found;
  return kBtkOk;
}

BtkErrorT ReadBoolean(const btkWChar* text, bool& value) {
  std::int32_t number = 0;
  if (BtkErrorT e = ReadKeyword(text, grammar::kBooleanWords, number)) return e;
  value = number != 0;
  return kBtkOk;
}

BtkErrorT ReadDecimal(const btkWChar* text, std::int32_t& number) {
  using Limits = std::numeric_limits<std::int32_t>;
  char value[kDecimalSize];
  if (BtkErrorT e = ToShortText(text, value, sizeof value)) return e;
  if (value[0] == '\0') return kBtkMalformed;
  errno = 0;
  const long long parsed = std::strtoll(value, nullptr, 10);
  if (errno != 0 || parsed < Limits::min() || parsed > Limits::max()) return kBtkMalformed;
  number = static_cast<std::int32_t>(parsed);
  return kBtkOk;
}

BtkErrorT ReadDecimal16(const btkWChar* text, std::int16_t& number) {
  std::int32_t parsed = 0;
  if (BtkErrorT e = ReadDecimal(text, parsed)) return e;
  if (parsed < 0 || parsed > std::numeric_limits<std::int16_t>::max()) return kBtkOutOfRange;
  number = static_cast<std::int16_t>(parsed);
  return kBtkOk;
}

BtkErrorT ReadUniqueId(const btkWChar* text, UniIdT& id) {
  char value[kBtkUniIdDashedLength + 1];
  std::size_t length = 0;
  if (ToShortText(text, value, sizeof value, &length) != kBtkOk) return kBtkMalformed;
  if (length != kBtkUniIdPlainLength && length != kBtkUniIdDashedLength) return kBtkMalformed;
  const int form = length == kBtkUniIdPlainLength ? kBtkUniIdPlain : kBtkUniIdDashed;
  const BtkErrorT e = btkUniIdParse(&id, value, kBtkWholeText, nullptr, form);
  return e == kBtkOk || e == kBtkNoMemory ? e : kBtkMalformed;
}

BtkErrorT ReadText(const btkWChar* text, Utf8Text& value) {
  if (text == nullptr) return kBtkMalformed;
  return btkStrUtf16ToUtf8Alloc(Out(value), nullptr, text, kBtkWholeText);
}

BtkErrorT ReadText(const btkWChar* text, WideText& value) {
  if (text == nullptr) return kBtkMalformed;
  value.reset(btk_wcsdup(text));
  return value ? kBtkOk : kBtkNoMemory;
}

BtkErrorT ReadWords(const btkWChar* text, MfListT<char>& words) {
  static constexpr char kSeparator[] = ";";
  Utf8Text all;
  if (BtkErrorT e = ReadText(text, all)) return e;
  char* rest = all.get() + std::strspn(all.get(), kSeparator);
  if (*rest == '\0') return kBtkMalformed;

  TypeList collected;
  collected.Adopt(words);
  while (*rest != '\0') {
    char* const word = rest;
    rest += std::strcspn(rest, kSeparator);
    if (*rest != '\0') *rest++ = '\0';
    rest += std::strspn(rest, kSeparator);

    Utf8Text copy(btk_strdup(word));
    if (!copy || !collected.Append(copy.get())) return kBtkNoMemory;
    copy.release();
  }
  collected.HandOver(words);
  return kBtkOk;
}

}  // namespace tarnmf
