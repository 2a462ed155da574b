// SPDX-License-Identifier: Apache-2.0
#include "platform/unique_id.h"

#include <cctype>
#include <cstring>

#include "platform/host/id_sources.h"
#include "platform/host/process_facts.h"

namespace {

bool HasDashBefore(std::size_t byte) {
  return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

// The value of a hexadecimal digit, or -1.
int DigitValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  const int letter = std::tolower(static_cast<unsigned char>(digit));
  return letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : -1;
}

// `text` has as many characters as the form takes.
bool ParseBytes(const char* text, int form, UniIdT& id) {
  for (std::size_t byte = 0; byte < sizeof id.bytes; ++byte) {
    if (form == kBtkUniIdDashed && HasDashBefore(byte) && *text++ != '-') return false;
    const int high = DigitValue(*text++);
    const int low = DigitValue(*text++);
    if (high < 0 || low < 0) return false;
    id.bytes[byte] = static_cast<std::uint8_t>(high * 16 + low);
  }
  return true;
}

std::size_t FormLength(int form) {
  return form == kBtkUniIdPlain ? kBtkUniIdPlainLength : kBtkUniIdDashedLength;
}

// The names of ids that are made from others hang below this one.
constexpr UniIdT kCombinedNamespace = {{0x6f, 0x0c, 0x3a, 0x52, 0x9d, 0x71, 0x4e, 0x0b, 0xa2, 0x48,
                                        0x5c, 0xe0, 0x13, 0x97, 0xd4, 0x2e}};

}  // namespace

int btkUniIdCompare(const UniIdT* left, const UniIdT* right) {
  return std::memcmp(left->bytes, right->bytes, sizeof left->bytes);
}

bool btkUniIdIsEqual(const UniIdT* left, const UniIdT* right) {
  return std::memcmp(left->bytes, right->bytes, sizeof left->bytes) == 0;
}

BtkErrorT btkUniIdParse(UniIdT* out, const char* text, std::size_t length, const char** end,
                        int form) {
  const std::size_t wanted = FormLength(form);
  // Looks no further than one character after the id, and never past the text's NUL.
  const std::size_t available = strnlen(text, length < wanted + 1 ? length : wanted + 1);
  if (available < wanted || (end == nullptr && available > wanted)) return kBtkMalformed;
  UniIdT id;
  if (!ParseBytes(text, form, id)) return kBtkMalformed;
  *out = id;
  if (end != nullptr) *end = text + wanted;
  return kBtkOk;
}

BtkErrorT btkUniIdFormat(char* buffer, std::size_t size, std::size_t* length, const UniIdT* id,
                         int form, int /*reserved*/) {
  static constexpr char kDigits[] = "0123456789abcdef";
  const std::size_t wanted = FormLength(form);
  if (size <= wanted) return kBtkTooLong;
  for (std::size_t byte = 0; byte < sizeof id->bytes; ++byte) {
    if (form != kBtkUniIdPlain && HasDashBefore(byte)) *buffer++ = '-';
    *buffer++ = kDigits[id->bytes[byte] / 16];
    *buffer++ = kDigits[id->bytes[byte] % 16];
  }
  *buffer = '\0';
  if (length != nullptr) *length = wanted;
  return kBtkOk;
}

// Asking the system for random bits takes longer than anything else that is done with an id. So each
// thread asks once for many ids, which share them and differ in a number at their end.
BtkErrorT btkUniIdGen14(UniIdT* out, int /*kind*/, int /*reserved*/) {
  thread_local UniIdT random;
  thread_local std::uint16_t number = 0;
  thread_local unsigned process = 0;
  if (number == 0 || process != ForkGeneration()) {
    if (BtkErrorT e = RandomId(random)) return e;
    number = 0;
    process = ForkGeneration();
  }
  *out = random;
  out->bytes[14] = static_cast<std::uint8_t>(number >> 8);
  out->bytes[15] = static_cast<std::uint8_t>(number & 0xff);
  ++number;
  return kBtkOk;
}

BtkErrorT btkUniIdCombine(UniIdT* out, const UniIdT* left, const UniIdT* right) {
  char pair[2 * sizeof(UniIdT)];
  std::memcpy(pair, left->bytes, sizeof(UniIdT));
  std::memcpy(pair + sizeof(UniIdT), right->bytes, sizeof(UniIdT));
  return NamedId(*out, kCombinedNamespace, {pair, sizeof pair});
}
