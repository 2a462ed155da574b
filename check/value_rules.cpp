// SPDX-License-Identifier: Apache-2.0
// The rules on values of attributes.
#include <algorithm>
#include <fmt/format.h>
#include <utility>
#include <vector>

#include "check/inspection.h"
#include "check/placement.h"
#include "check/suggestions.h"
#include "check/values.h"
#include "check/wording.h"

namespace tarnmf::check {
namespace {

using grammar::AttributeT;
using grammar::ValueKind;

// A value with its attribute.
struct ValueAtHand {
  const Attribute& written;
  const AttributeT& described;
  const std::string& text;
};

Finding& ReportValue(Inspection& inspection, const ValueAtHand& value, Rule rule, BtkErrorT code,
                     const std::string& expected) {
  const Attribute& attribute = value.written;
  return inspection.Report(
      rule, code, attribute.value,
      fmt::format("{}: {}", Assigned(inspection.Doc().Name(attribute), value.text), expected));
}

// Values that a document type gives stand nowhere in the document.
void Suggest(Finding& finding, const ValueAtHand& value, std::string better, bool safe) {
  if (value.written.isDefault) return;
  finding.suggestions.push_back(Replace(value.written.value, value.text, std::move(better)));
  finding.suggestions.back().safe = safe;
}

std::string Trimmed(const std::string& text, const char* taken) {
  const std::size_t begin = text.find_first_not_of(taken);
  if (begin == std::string::npos) return {};
  return text.substr(begin, text.find_last_not_of(taken) + 1 - begin);
}
constexpr const char* kBlanks = " \t\r\n";

// ---- Ids ---------------------------------------------------------------------------------------

bool IsHexadecimal(char c) {
  return std::string_view("0123456789abcdefABCDEF").find(c) != std::string_view::npos;
}

std::size_t CodePoints(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xc0) != 0x80;
  }));
}

std::string WhatIsWrongWithId(const std::string& text) {
  static constexpr char kExpected[] = "36 or 32 hexadecimal characters are expected";
  const std::size_t length = CodePoints(text);
  if (length != kBtkUniIdPlainLength && length != kBtkUniIdDashedLength) {
    return fmt::format("{}, these are {}", kExpected, length);
  }
  const auto odd =
      std::find_if(text.begin(), text.end(), [](char c) { return c != '-' && !IsHexadecimal(c); });
  if (odd == text.end()) {
    return fmt::format("{}; of 36, dashes are the 9th, the 14th, the 19th and the 24th", kExpected);
  }
  auto end = odd + 1;
  while (end != text.end() && (static_cast<unsigned char>(*end) & 0xc0) == 0x80)
    ++end;
  return fmt::format("{}; {} is none", kExpected, Quoted(std::string(odd, end)));
}

void CheckId(Inspection& inspection, const ValueAtHand& value) {
  Finding& finding =
      ReportValue(inspection, value, Rule::kBadId, kBtkMalformed, WhatIsWrongWithId(value.text));
  const std::string bare = Trimmed(value.text, " \t\r\n{}");
  if (ReadId(bare)) {
    Suggest(finding, value, bare, true);
    return;
  }
  // Digits that have been grouped in another way.
  std::string digits;
  for (const char c : bare) {
    if (c == '-' || c == ' ') continue;
    if (!IsHexadecimal(c)) return;
    digits += c;
  }
  if (ReadId(digits)) Suggest(finding, value, digits, false);
}

// ---- Words -------------------------------------------------------------------------------------

// What people write for yes and no elsewhere.
struct Synonym {
  const char* written;
  const char* meant;
  bool isCertain;
};
constexpr Synonym kBooleanSynonyms[] = {
    {"1", "yes", true},  {"0", "no", true},  {"on", "yes", false}, {"off", "no", false},
    {"y", "yes", false}, {"n", "no", false}, {"t", "true", false}, {"f", "false", false},
};

const Synonym* SynonymOf(const std::string& text) {
  const auto synonym =
      std::find_if(std::begin(kBooleanSynonyms), std::end(kBooleanSynonyms),
                   [&](const Synonym& one) { return Folded(text) == one.written; });
  return synonym != std::end(kBooleanSynonyms) ? synonym : nullptr;
}

// Reports a value other than the admitted words, and suggests those that may have been meant.
void ReportWord(Inspection& inspection, const ValueAtHand& value, Rule rule,
                const std::vector<std::string_view>& admitted,
                const std::vector<std::string_view>& meant, bool isCertain) {
  std::vector<std::string> shown;
  shown.reserve(admitted.size());
  for (const std::string_view word : admitted)
    shown.push_back(Quoted(word));
  Finding& finding = ReportValue(inspection, value, rule, kBtkMalformed,
                                 "expected " + Listed(shown, "or") + DidYouMean(meant, Quoted));
  for (const std::string_view word : meant)
    Suggest(finding, value, std::string(word), isCertain);
}

void CheckWord(Inspection& inspection, const ValueAtHand& value, Rule rule,
               const std::vector<std::string_view>& admitted) {
  CloseNames meant(Trimmed(value.text, kBlanks));
  for (const std::string_view word : admitted)
    meant.Offer(word);
  ReportWord(inspection, value, rule, admitted, meant.Best(), meant.IsOneStepAway());
}

void CheckBoolean(Inspection& inspection, const ValueAtHand& value) {
  std::vector<std::string_view> admitted;
  for (const grammar::Word& word : grammar::kBooleanWords.list)
    admitted.emplace_back(word.text);
  if (const Synonym* const synonym = SynonymOf(Trimmed(value.text, kBlanks))) {
    ReportWord(inspection, value, Rule::kBadBoolean, admitted, {synonym->meant},
               synonym->isCertain);
  } else {
    CheckWord(inspection, value, Rule::kBadBoolean, admitted);
  }
}

void CheckKeyword(Inspection& inspection, const ElementAtHand& element, const ValueAtHand& value) {
  std::vector<std::string_view> admitted;
  for (const grammar::Word& word : value.described.words->list) {
    if (IsWordAdmitted(word.number, value.described, element.described))
      admitted.emplace_back(word.text);
  }
  CheckWord(inspection, value, Rule::kBadKeyword, admitted);
}

void CheckManagedTypeOfClass(Inspection& inspection, const ElementAtHand& element,
                             const ValueAtHand& value) {
  if (value.described.kind != ValueKind::kKeyword) return;
  const std::optional<std::int32_t> word = ReadKeyword(value.text, *value.described.words);
  if (!word || IsWordAdmitted(*word, value.described, element.described)) return;
  ReportValue(inspection, value, Rule::kBadKeyword, kBtkForbidden,
              "only services are containers; expected \"generic\" or \"worker\"");
}

// ---- Numbers -----------------------------------------------------------------------------------

void CheckBadNumber(Inspection& inspection, const ValueAtHand& value, BtkErrorT code) {
  switch (code) {
    case kBtkOutOfRange:
      ReportValue(inspection, value, Rule::kOutOfRange, code, "must be a number from 0 to 32767");
      return;
    case kBtkWrongVersion:
      ReportValue(inspection, value, Rule::kWrongVersion, code, "only \"1\" is known");
      return;
    default: {
      const bool isNumber = ReadDecimal(value.text).has_value();
      ReportValue(inspection, value, Rule::kBadNumber, code,
                  isNumber ? "must be 32 or 64"
                           : "must be a number within 32 bits, written in 15 characters at most");
      return;
    }
  }
}

// Of a service's version 16 bits are used, and it is doubled in them.
constexpr std::int32_t kLargestServiceVersion = 16383;

void CheckNumberRead(Inspection& inspection, const ElementAtHand& element,
                     const ValueAtHand& value) {
  const Decimal decimal = *ReadDecimal(value.text);
  if (!decimal.isWhole) {
    Finding& finding = ReportValue(inspection, value, Rule::kNotANumber, kBtkOk,
                                   fmt::format("no whole number; read as {}", decimal.number));
    if (value.described.kind == ValueKind::kVersion) Suggest(finding, value, "1", true);
  }
  if (&element.described != &grammar::kService || value.described.kind != ValueKind::kDecimal) {
    return;
  }
  if (decimal.number > kLargestServiceVersion) {
    ReportValue(inspection, value, Rule::kNumberWraps, kBtkOk,
                fmt::format("a service version above {} wraps", kLargestServiceVersion));
  } else if (decimal.number < 0) {
    ReportValue(inspection, value, Rule::kNumberWraps, kBtkOk,
                "a negative service version is never found");
  }
}

// ---- Refusals ----------------------------------------------------------------------------------

void CheckRefused(Inspection& inspection, const ValueAtHand& value) {
  const Span name = value.written.name;
  Finding& finding = inspection.Report(Rule::kAttributeRefused, kBtkRefused, name,
                                       Quoted(inspection.Text().Text(name)) + " is never admitted");
  if (value.written.isDefault) return;
  finding.suggestions.push_back(
      Remove(WithBlanksBefore(inspection.Text(), {name.begin, value.written.value.end + 1}),
             Quoted(inspection.Text().Text(name))));
}

void CheckBadValue(Inspection& inspection, const ElementAtHand& element, const ValueAtHand& value,
                   BtkErrorT code) {
  switch (value.described.kind) {
    case ValueKind::kKeyword:
      CheckKeyword(inspection, element, value);
      return;
    case ValueKind::kBoolean:
      CheckBoolean(inspection, value);
      return;
    case ValueKind::kUniqueId:
      CheckId(inspection, value);
      return;
    case ValueKind::kRefused:
      CheckRefused(inspection, value);
      return;
    default:
      break;
  }
  if (value.text.empty() || value.described.kind == ValueKind::kWordList) {
    ReportValue(inspection, value, Rule::kEmptyValue, code,
                value.text.empty() ? "must not be empty" : "must hold a word");
  } else {
    CheckBadNumber(inspection, value, code);
  }
}

}  // namespace

void CheckValue(Inspection& inspection, const ElementAtHand& element,
                const GivenAttributes::Known& attribute) {
  const ValueAtHand value = {*attribute.written, *attribute.described, attribute.written->text};
  const bool isRefused = value.described.kind == ValueKind::kRefused;
  if (!value.written.isKnown && !isRefused) return;
  if (const BtkErrorT code = CodeOf(value.text, value.described)) {
    CheckBadValue(inspection, element, value, code);
    return;
  }
  switch (value.described.kind) {
    case ValueKind::kDecimal:
    case ValueKind::kDecimal16:
    case ValueKind::kVersion:
    case ValueKind::kAddressBits:
      CheckNumberRead(inspection, element, value);
      return;
    default:
      CheckManagedTypeOfClass(inspection, element, value);
      return;
  }
}

}  // namespace tarnmf::check
