// SPDX-License-Identifier: Apache-2.0
#include "check/encoding.h"

#include <algorithm>
#include <cstdint>
#include <fmt/format.h>
#include <span>
#include <utf8.h>
#include <utility>

#include "check/characters.h"
#include "platform/host/text_converter.h"

namespace tarnmf::check {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"sv;

// ---- What the bytes themselves tell -------------------------------------------------------------

struct Sensed {
  const char* name;
  std::string_view begin;  // by which it is known
  bool isMark;             // and does not belong to the text
};

// In the order in which the XML library tries them. Without a mark it knows nothing but a whole
// "<?xml ".
constexpr Sensed kSensed[] = {
    {"UTF-32BE", "\0\0\xFE\xFF"sv, true},
    {"UTF-32LE", "\xFF\xFE\0\0"sv, true},
    {"UTF-16BE", "\xFE\xFF"sv, true},
    {"UTF-16LE", "\xFF\xFE"sv, true},
    {"UTF-8", "\xEF\xBB\xBF"sv, true},
    {"UTF-16BE", "\0<\0?\0x\0m\0l\0 "sv, false},
    {"UTF-16LE", "<\0?\0x\0m\0l\0 \0"sv, false},
    {"UTF-32BE", "\0\0\0<\0\0\0?\0\0\0x\0\0\0m\0\0\0l\0\0\0 "sv, false},
    {"UTF-32LE", "<\0\0\0?\0\0\0x\0\0\0m\0\0\0l\0\0\0 \0\0\0"sv, false},
    {"IBM037", "\x4C\x6F\xA7\x94\x93\x40"sv, false},
};
constexpr Sensed kUtf8{"UTF-8", ""sv, false};

const Sensed& Sense(std::string_view bytes) {
  const auto found = std::find_if(std::begin(kSensed), std::end(kSensed),
                                  [&](const Sensed& row) { return bytes.starts_with(row.begin); });
  return found != std::end(kSensed) ? *found : kUtf8;
}

bool IsEbcdic(const Sensed& sensed) {
  return sensed.name == "IBM037"sv;
}

std::string UpperCase(std::string_view name) {
  std::string upper(name);
  std::transform(upper.begin(), upper.end(), upper.begin(), ToUpper);
  return upper;
}

// Names that say nothing about the order of bytes: the XML library goes by what it has sensed.
bool IsGeneric(std::string_view upperName) {
  constexpr std::string_view kNames[] = {
      "UTF-16",   "UTF16",           "UCS-2", "UCS2", "ISO-10646-UCS-2", "IBM1200",
      "IBM-1200", "ISO-10646-UCS-4", "UCS-4", "UCS4", "UTF-32",          "UTF32"};
  return std::find(std::begin(kNames), std::end(kNames), upperName) != std::end(kNames);
}

// ---- Decoding -----------------------------------------------------------------------------------

struct Decoding {
  std::string text;
  std::optional<DecodingFault> fault;

  void Append(char32_t codePoint) { utf8::append(codePoint, std::back_inserter(text)); }
  void Refuse(std::string message) {
    if (!fault)
      fault = DecodingFault{{text.size(), text.size() + kReplacement.size()}, std::move(message)};
    text += kReplacement;
  }
};

void AppendUtf8(std::string_view bytes, Decoding& out) {
  while (!bytes.empty()) {
    const auto valid =
        static_cast<std::size_t>(utf8::find_invalid(bytes.begin(), bytes.end()) - bytes.begin());
    out.text += bytes.substr(0, valid);
    bytes.remove_prefix(valid);
    if (bytes.empty()) return;
    out.Refuse(fmt::format("byte 0x{:02X} is no UTF-8", static_cast<unsigned char>(bytes[0])));
    bytes.remove_prefix(1);
  }
}

// The units of UTF-16 or UTF-32, `Width` bytes each. Bytes that make no whole unit at the end are
// passed over, as the XML library does.
template <std::size_t Width>
class Units {
 public:
  Units(std::string_view bytes, bool isBigEndian) : bytes_(bytes), isBigEndian_(isBigEndian) {}

  std::size_t Count() const { return bytes_.size() / Width; }
  std::uint32_t operator[](std::size_t unit) const {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < Width; ++i) {
      const std::size_t byte = unit * Width + (isBigEndian_ ? i : Width - 1 - i);
      value = value << 8U | static_cast<unsigned char>(bytes_[byte]);
    }
    return value;
  }

 private:
  std::string_view bytes_;
  bool isBigEndian_;
};

bool IsSurrogate(std::uint32_t unit) {
  return (unit & ~0x7FFU) == 0xD800U;
}

void AppendUtf16(Units<2> units, Decoding& out) {
  for (std::size_t i = 0; i < units.Count(); ++i) {
    const std::uint32_t unit = units[i];
    const std::uint32_t next = i + 1 < units.Count() ? units[i + 1] : 0;
    if (!IsSurrogate(unit)) {
      out.Append(unit);
    } else if (unit < 0xDC00U && (next & ~0x3FFU) == 0xDC00U) {
      out.Append(0x10000U + ((unit - 0xD800U) << 10U) + (next - 0xDC00U));
      ++i;
    } else {
      out.Refuse(fmt::format("unit 0x{:04X} is no UTF-16: half a character", unit));
    }
  }
}

void AppendUtf32(Units<4> units, Decoding& out) {
  for (std::size_t i = 0; i < units.Count(); ++i) {
    const std::uint32_t unit = units[i];
    if (unit > 0x10FFFFU || IsSurrogate(unit)) {
      out.Refuse(fmt::format("unit 0x{:08X} is no UTF-32", unit));
    } else {
      out.Append(unit);
    }
  }
}

void AppendMeaningless(unsigned char byte, std::string_view upperName, Decoding& out) {
  switch (TextConverter::TreatmentOf(byte, upperName)) {
    case Meaningless::kRefused:
      out.Refuse(fmt::format("byte 0x{:02X} is no {}", byte, upperName));
      break;
    case Meaningless::kKept:
      out.Append(byte);
      break;
    case Meaningless::kReplaced:
      out.text += kReplacement;
      break;
  }
}

void AppendConverted(std::string_view bytes, std::string_view upperName, TextConverter& converter,
                     Decoding& out) {
  for (;;) {
    converter.Convert(bytes, out.text);
    if (bytes.empty()) return;
    AppendMeaningless(static_cast<unsigned char>(bytes[0]), upperName, out);
    bytes.remove_prefix(1);
  }
}

// Those that are decoded here rather than by the system.
bool IsUnicode(std::string_view upperName) {
  constexpr std::string_view kNames[] = {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"};
  return std::find(std::begin(kNames), std::end(kNames), upperName) != std::end(kNames);
}

bool IsKnown(const std::string& upperName) {
  return IsUnicode(upperName) || TextConverter(upperName).IsKnown();
}

std::string KnownName(std::string upperName) {
  if (!IsUnicode(upperName)) upperName = TextConverter::KnownName(std::move(upperName));
  return upperName == "UTF8" ? "UTF-8" : upperName;
}

// Appends nothing when the system does not know the encoding.
void AppendDecoded(std::string_view bytes, const std::string& upperName, Decoding& out) {
  if (upperName == "UTF-8") {
    AppendUtf8(bytes, out);
  } else if (upperName == "UTF-16LE" || upperName == "UTF-16BE") {
    AppendUtf16({bytes, upperName.ends_with("BE")}, out);
  } else if (upperName == "UTF-32LE" || upperName == "UTF-32BE") {
    AppendUtf32({bytes, upperName.ends_with("BE")}, out);
  } else {
    TextConverter converter(upperName);
    if (converter.IsKnown()) AppendConverted(bytes, upperName, converter, out);
  }
}

// ---- The declaration ----------------------------------------------------------------------------

std::size_t SkipBlanks(std::string_view text, std::size_t at) {
  return std::min(text.find_first_not_of(kBlanks, at), text.size());
}

// Far more than any declaration needs, and little to decode.
constexpr std::size_t kDeclarationBytes = 1024;

bool IsEncodingName(std::string_view name) {
  return BeginsName(name[0]) && std::all_of(name.begin(), name.end(), [](char c) {
           return IsOfName(c) && c != ':' && static_cast<unsigned char>(c) < 0x80U;
         });
}

// Does `encoding` read the beginning of the bytes as the XML declaration that was sensed there?
bool ReadsDeclaration(std::string_view bytes, const std::string& encoding) {
  Decoding begin;
  AppendDecoded(bytes.substr(0, 24), encoding, begin);
  return begin.text.starts_with("<?xml");
}

void DecodeAs(const std::string& encoding, std::string_view bytes, DecodedText& result) {
  Decoding decoding;
  AppendDecoded(bytes, encoding, decoding);
  result.text = std::move(decoding.text);
  result.fault = std::move(decoding.fault);
  result.isUtf8 = !result.fault && result.text == bytes;
}

constexpr std::string_view kMark = "\xEF\xBB\xBF"sv;

// What the XML library does not take for the beginning of a document, though others do.
void CheckBegin(std::string_view bytes, DecodedText& result) {
  constexpr std::string_view kUnmarked[] = {"<\0"sv, "\0<"sv, "\0\0\0<"sv};
  const bool isUnmarked = result.encoding == "UTF-8" &&
                          std::any_of(std::begin(kUnmarked), std::end(kUnmarked),
                                      [&](auto begin) { return bytes.starts_with(begin); });
  if (isUnmarked) {
    result.fault =
        DecodingFault{{0, 1}, "UTF-16 is read only with a byte order mark or an XML declaration"};
  } else if (result.markSize > 0 && result.text.starts_with(kMark)) {
    result.fault = DecodingFault{{0, kMark.size()}, "a second byte order mark"};
  }
}

// The encoding that the XML declaration names.
struct DeclaredEncoding {
  Span place;
  std::string name;   // as it is written; empty: none is
  std::string known;  // as it is known here

  bool SaysNothing() const { return known.empty() || IsGeneric(known); }
};

DeclaredEncoding DeclaredIn(std::string_view text) {
  DeclaredEncoding declared;
  declared.place = DeclaredValue(text, "encoding");
  declared.name = text.substr(declared.place.begin, declared.place.Size());
  declared.known = UpperCase(declared.name);
  if (!IsGeneric(declared.known)) declared.known = KnownName(declared.known);
  return declared;
}

DecodingFault NoEncodingName(const DeclaredEncoding& declared) {
  return {declared.place, fmt::format(R"("{}" is no name of an encoding)", declared.name)};
}

}  // namespace

Span DeclaredValue(std::string_view text, std::string_view name) {
  if (!text.starts_with("<?xml") || text.find_first_of(kBlanks, 5) != 5) return {};
  text = text.substr(0, text.find("?>"));
  std::size_t at = text.find(name);
  if (at == std::string_view::npos) return {};
  at = SkipBlanks(text, at + name.size());
  if (at == text.size() || text[at] != '=') return {};
  at = SkipBlanks(text, at + 1);
  if (at == text.size() || (text[at] != '"' && text[at] != '\'')) return {};
  const std::size_t end = text.find(text[at], at + 1);
  if (end == std::string_view::npos) return {};
  return {at + 1, end};
}

bool NamesWideUnits(std::string_view encoding) {
  return IsGeneric(UpperCase(encoding));
}

DecodedText Decode(std::string_view bytes) {
  DecodedText result;
  const Sensed& sensed = Sense(bytes);
  if (sensed.isMark) result.markSize = sensed.begin.size();
  bytes.remove_prefix(result.markSize);

  Decoding begin;
  AppendDecoded(bytes.substr(0, kDeclarationBytes), sensed.name, begin);
  const DeclaredEncoding declared = DeclaredIn(begin.text);

  result.encoding = sensed.name;
  if (declared.SaysNothing()) {
    DecodeAs(sensed.name, bytes, result);
    if (IsEbcdic(sensed))
      result.fault = DecodingFault{{0, 5}, "an EBCDIC file must declare its encoding"};
  } else if (!IsEncodingName(declared.name)) {
    DecodeAs(sensed.name, bytes, result);
    result.fault = NoEncodingName(declared);
  } else if (!IsKnown(declared.known)) {
    DecodeAs(sensed.name, bytes, result);
    result.encoding = declared.name;
    result.isKnown = false;
    result.fault.reset();
    return result;
  } else if (!ReadsDeclaration(bytes, declared.known)) {
    DecodeAs(sensed.name, bytes, result);
    result.fault = DecodingFault{
        declared.place, fmt::format(R"("{}" is declared, but the file is written in {})",
                                    declared.name, IsEbcdic(sensed) ? "EBCDIC" : sensed.name)};
  } else {
    result.encoding = declared.known == "UTF-8" ? declared.known : declared.name;
    DecodeAs(declared.known, bytes, result);
  }
  CheckBegin(bytes, result);
  return result;
}

DecodedText DecodeEdited(std::string_view text) {
  DecodedText result;
  if (text.starts_with(kMark)) result.markSize = kMark.size();
  text.remove_prefix(result.markSize);
  DecodeAs("UTF-8", text, result);
  result.encoding = "UTF-8";
  const DeclaredEncoding declared = DeclaredIn(text);
  if (!declared.name.empty() && !IsEncodingName(declared.name)) {
    result.fault = NoEncodingName(declared);
  } else if (!declared.name.empty() && declared.known != "UTF-8") {
    result.encoding = declared.name;
    result.isKnown = IsGeneric(declared.known) || IsKnown(declared.known);
    result.isUtf8 = false;
  }
  return result;
}

}  // namespace tarnmf::check
