// SPDX-License-Identifier: Apache-2.0
#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utf8.h>

#include "platform/memory.h"

namespace {

constexpr std::size_t kStackUnits = 256;
constexpr std::size_t kUtf8PerUnit = 3;  // a surrogate pair takes 4 bytes for two units

template <class Char>
std::size_t LengthOf(const Char* text, std::size_t length) {
  return length == kBtkWholeText ? std::char_traits<Char>::length(text) : length;
}

// Converts into `out`, which has room for the longest result; null for text that is not valid. The
// ASCII characters at the start, mostly all there is, need no conversion.
char* Convert(const btkWChar* in, std::size_t length, char* out) {
  const btkWChar* const end = in + length;
  while (in != end && *in < 0x80)
    *out++ = static_cast<char>(*in++);
  try {
    return utf8::utf16to8(in, end, out);
  } catch (const utf8::exception&) {
    return nullptr;
  }
}
btkWChar* Convert(const char* in, std::size_t length, btkWChar* out) {
  try {
    return utf8::utf8to16(in, in + length, out);
  } catch (const utf8::exception&) {
    return nullptr;
  }
}

template <class Char>
Char* Allocate(std::size_t units) {
  return static_cast<Char*>(btkStrReAlloc(nullptr, (units + 1) * sizeof(Char)));
}

// A new string of the size of its text: a short text is converted on the stack first, a long one
// into a block of the largest size, which is then cut.
template <class Out, std::size_t OutPerUnit, class In>
BtkErrorT ConvertAlloc(Out** out, std::size_t* length, const In* in, std::size_t inLength) {
  *out = nullptr;
  if (in == nullptr) return kBtkNullArgument;
  const std::size_t units = LengthOf(in, inLength);
  const bool isShort = units <= kStackUnits;
  Out stack[kStackUnits * OutPerUnit];
  Out* block = isShort ? nullptr : Allocate<Out>(units * OutPerUnit);
  if (!isShort && block == nullptr) return kBtkNoMemory;

  Out* const begin = isShort ? stack : block;
  Out* const end = Convert(in, units, begin);
  if (end == nullptr) {
    btkStrFree(block);
    return kBtkBadText;
  }
  const auto used = static_cast<std::size_t>(end - begin);
  if (isShort) {
    block = Allocate<Out>(used);
    if (block == nullptr) return kBtkNoMemory;
    std::memcpy(block, stack, used * sizeof(Out));
  } else if (void* cut = btkStrReAlloc(block, (used + 1) * sizeof(Out))) {
    block = static_cast<Out*>(cut);
  }
  block[used] = 0;
  *out = block;
  if (length != nullptr) *length = used;
  return kBtkOk;
}

BtkErrorT CopyTo(char* buffer, std::size_t size, std::size_t* length, std::string_view text) {
  if (text.size() >= size) return kBtkTooLong;
  std::memcpy(buffer, text.data(), text.size());
  buffer[text.size()] = '\0';
  if (length != nullptr) *length = text.size();
  return kBtkOk;
}

BtkErrorT ConvertLong(char* buffer, std::size_t size, std::size_t* length, const btkWChar* in,
                      std::size_t units) {
  char* converted = nullptr;
  if (BtkErrorT e = btkStrUtf16ToUtf8Alloc(&converted, nullptr, in, units)) return e;
  const BtkErrorT result = CopyTo(buffer, size, length, converted);
  btkStrFree(converted);
  return result;
}

}  // namespace

BtkErrorT btkStrUtf16ToUtf8(char* buffer, std::size_t size, std::size_t* length, const btkWChar* in,
                            std::size_t inLength) {
  if (size > 0) buffer[0] = '\0';
  if (in == nullptr) return kBtkNullArgument;
  const std::size_t units = LengthOf(in, inLength);
  if (units >= size) return kBtkTooLong;  // every unit takes a byte at least
  if (units > kStackUnits) return ConvertLong(buffer, size, length, in, units);
  char converted[kStackUnits * kUtf8PerUnit];
  const char* const end = Convert(in, units, converted);
  if (end == nullptr) return kBtkBadText;
  return CopyTo(buffer, size, length, {converted, end});
}

BtkErrorT btkStrUtf16ToUtf8Alloc(char** out, std::size_t* length, const btkWChar* in,
                                 std::size_t inLength) {
  return ConvertAlloc<char, kUtf8PerUnit>(out, length, in, inLength);
}

BtkErrorT btkStrMultibyteToWideAlloc(btkWChar** out, std::size_t* length, const char* in,
                                     std::size_t inLength) {
  return ConvertAlloc<btkWChar, 1>(out, length, in, inLength);
}

BtkErrorT btkStrUtf8ToLowerAlloc(char** out, std::size_t* length, const char* in,
                                 std::size_t inLength) {
  *out = nullptr;
  if (in == nullptr) return kBtkNullArgument;
  const std::size_t bytes = LengthOf(in, inLength);
  if (!utf8::is_valid(in, in + bytes)) return kBtkBadText;
  char* const lower = Allocate<char>(bytes);
  if (lower == nullptr) return kBtkNoMemory;
  std::transform(in, in + bytes, lower, btkAsciiToLower<char>);
  lower[bytes] = '\0';
  *out = lower;
  if (length != nullptr) *length = bytes;
  return kBtkOk;
}
