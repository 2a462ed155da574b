// SPDX-License-Identifier: Apache-2.0
#include "platform/host/text_converter.h"

#include <array>
#include <cerrno>
#include <iconv.h>

// Where a name is not known, its letters and digits count alone.
std::string TextConverter::KnownName(std::string upperName) {
  if (!TextConverter(upperName).IsKnown()) {
    std::erase_if(upperName,
                  [](char c) { return !(c >= '0' && c <= '9') && !(c >= 'A' && c <= 'Z'); });
  }
  return upperName;
}

Meaningless TextConverter::TreatmentOf(unsigned char byte, std::string_view upperName) {
  const bool isStrict = upperName == "US-ASCII" || upperName == "ASCII" || upperName == "EUC-JP" ||
                        upperName == "EUC-KR";
  if (isStrict) return Meaningless::kRefused;
  const bool isControl = upperName.starts_with("WINDOWS-125") && byte < 0xA0U;
  return isControl ? Meaningless::kKept : Meaningless::kReplaced;
}

TextConverter::TextConverter(const std::string& upperName)
    : converter_(iconv_open("UTF-8", upperName.c_str())) {}

TextConverter::~TextConverter() {
  if (IsKnown()) iconv_close(converter_);
}

// The system's word for "none" is this number, whatever its type is.
bool TextConverter::IsKnown() const {
  // NOLINTNEXTLINE(performance-no-int-to-ptr)
  return converter_ != reinterpret_cast<iconv_t>(-1);
}

void TextConverter::Convert(std::string_view& bytes, std::string& text) {
  std::array<char, 4096> room;
  while (!bytes.empty()) {
    char* from = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    char* to = room.data();
    std::size_t free = room.size();
    const std::size_t result = iconv(converter_, &from, &left, &to, &free);
    const bool isFull = result == static_cast<std::size_t>(-1) && errno == E2BIG;
    text.append(room.data(), to);
    bytes.remove_prefix(bytes.size() - left);
    if (!isFull) return;
  }
}
