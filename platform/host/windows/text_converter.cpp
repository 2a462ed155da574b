// SPDX-License-Identifier: Apache-2.0
#include "platform/host/text_converter.h"

#include <windows.h>
#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/filesystem.h"

namespace {

// Where the system keeps the names of its code pages; the XML library finds them there, too.
constexpr char kNames[] = "MIME\\Database\\Charset\\";

std::wstring Wide(const std::string& text) {
  return btkFSPath(text.c_str()).WideText();
}

// Empty where there is none.
std::string AliasOf(const std::string& name) {
  wchar_t alias[256] = {};
  DWORD size = sizeof alias;
  const LSTATUS e = RegGetValueW(HKEY_CLASSES_ROOT, Wide(kNames + name).c_str(), L"AliasForCharset",
                                 RRF_RT_REG_SZ, nullptr, alias, &size);
  return e == ERROR_SUCCESS ? btkFSPath(alias).NarrowText() : "";
}

constexpr UINT kAscii = 20127;

// What the XML library knows without the system.
constexpr std::pair<std::string_view, UINT> kOwnNames[] = {
    {"US-ASCII", kAscii}, {"ASCII", kAscii}, {"ISO-8859-1", 28591},
    {"ISO8859-1", 28591}, {"LATIN1", 28591}, {"WINDOWS-1252", 1252},
};

// 0 for a name that the system does not know.
UINT RegisteredPage(const std::string& name) {
  DWORD page = 0;
  DWORD size = sizeof page;
  const LSTATUS e = RegGetValueW(HKEY_CLASSES_ROOT, Wide(kNames + name).c_str(),
                                 L"InternetEncoding", RRF_RT_REG_DWORD, nullptr, &page, &size);
  return e == ERROR_SUCCESS && IsValidCodePage(page) != 0 ? page : 0;
}

UINT CodePageOf(const std::string& name) {
  for (const auto& [own, page] : kOwnNames) {
    if (name == own) return page;
  }
  const std::string alias = AliasOf(name);
  return RegisteredPage(alias.empty() ? name : alias);
}

UINT PageOf(const void* converter) {
  return static_cast<UINT>(reinterpret_cast<std::uintptr_t>(converter));
}

// Nothing when the bytes are no character of the code page, or not a whole one.
std::wstring CharacterOf(UINT page, std::string_view bytes) {
  if (page == kAscii && static_cast<unsigned char>(bytes[0]) >= 0x80) return L"";
  wchar_t units[8];
  const int count = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(),
                                        static_cast<int>(bytes.size()), units, 8);
  return {units, static_cast<std::size_t>(std::max(count, 0))};
}

}  // namespace

std::string TextConverter::KnownName(std::string upperName) {
  return upperName;
}

Meaningless TextConverter::TreatmentOf(unsigned char /*byte*/, std::string_view /*upperName*/) {
  return Meaningless::kRefused;
}

TextConverter::TextConverter(const std::string& upperName) {
  converter_ = reinterpret_cast<void*>(static_cast<std::uintptr_t>(CodePageOf(upperName)));
}

TextConverter::~TextConverter() = default;

bool TextConverter::IsKnown() const {
  return PageOf(converter_) != 0;
}

void TextConverter::Convert(std::string_view& bytes, std::string& text) {
  const UINT page = PageOf(converter_);
  constexpr std::size_t kMostBytes = 4;  // of a character
  while (!bytes.empty()) {
    std::size_t size = 0;
    std::wstring character;
    while (character.empty() && size < std::min(kMostBytes, bytes.size()))
      character = CharacterOf(page, bytes.substr(0, ++size));
    if (character.empty()) return;
    text += btkFSPath(character.c_str()).NarrowText();
    bytes.remove_prefix(size);
  }
}
