// SPDX-License-Identifier: Apache-2.0
// What the statements of a layout file say.
#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <limits>
#include <utility>

#include "check/layout_scan.h"
#include "platform/text.h"
#include "repository/layout_file.h"
#include "support/owned.h"

namespace tarnmf::check {
namespace {

// The address bits that mean something, and what they are when a file says nothing.
constexpr std::int32_t kBits32 = 32;
constexpr std::int32_t kBits64 = 64;
constexpr std::int32_t kBits3264 = 3264;
constexpr std::int32_t kBits6432 = 6432;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// Whether the platform can make a wide text of it.
bool IsConvertible(const std::string& text) {
  WideText wide;
  return btkStrMultibyteToWideAlloc(Out(wide), nullptr, text.c_str(), kBtkWholeText) == kBtkOk;
}

}  // namespace

// ---- Values ------------------------------------------------------------------------------------

LayoutResult LayoutScan::ReadBase() {
  Span text;
  if (!IsAt('"')) return Expected("a text in double quotes", {at_, at_});
  if (LayoutResult fault = TakeQuoted(text)) return fault;
  const std::string written = TextUpToNul(text);
  btkFSEntry base = file_.GetHead();
  base /= written.c_str();
  base += "/";
  if (!IsConvertible(base.Path().NarrowText())) {
    return LayoutFault{text, "the folder's name is no valid UTF-8", kBtkBadText};
  }
  text_.base = written;
  text_.basePlace = PlaceOf(text).span;
  text_.basePath = base.Path().NarrowText();
  return {};
}

LayoutResult LayoutScan::ReadScope() {
  const char* const text = bytes_.data() + at_;
  const char* end = nullptr;
  if (btkUniIdParse(&text_.scope, text, end_ - at_, &end, kBtkUniIdDashed) == kBtkOk) {
    at_ += static_cast<std::size_t>(end - text);
    return {};
  }
  const Span word = Unexpected({at_, at_});
  return LayoutFault{word,
                     fmt::format("{}: an id of {} characters in the form 8-4-4-4-12 is expected, "
                                 "these are {}",
                                 Told(Text(word)), kBtkUniIdDashedLength, word.Size())};
}

LayoutResult LayoutScan::ReadBits() {
  if (LayoutResult fault = TakeNumber(bits_)) return fault;
  text_.bits = bits_.value;
  return {};
}

LayoutResult LayoutScan::SkipVersion() {
  const auto belongs = [](char character) {
    return character != '\0' && std::strchr(" \t\r\n", character) == nullptr;
  };
  TakeRun([](char character) { return character == ' ' || character == '\t'; });
  if (TakeRun(belongs).Size() == 0) return Expected("a value", {at_, at_});
  return {};
}

// What the C library's `strtol` takes. A text without digits gives 0.
LayoutResult LayoutScan::TakeNumber(LayoutNumber& number) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::size_t start = at_;
  SkipBlanks();
  const std::size_t begin = at_;
  const bool isNegative = IsAt('-');
  if (isNegative || IsAt('+')) ++at_;
  const Span digits = TakeRun(IsDigit);
  number = {};
  if (digits.Size() == 0) {
    number.span = {begin, begin};
    at_ = start;
    return {};
  }
  number.span = {begin, digits.end};
  constexpr std::int64_t kTooLarge = std::int64_t{1} << 40;
  std::int64_t value = 0;
  for (const char digit : Text(digits))
    value = std::min(value * 10 + (digit - '0'), kTooLarge);
  if (isNegative) value = -value;
  if (value < Limits::min() || value > Limits::max()) {
    return LayoutFault{number.span, fmt::format("{}: a number within 32 bits is expected",
                                                Told(Text(number.span)))};
  }
  number.value = static_cast<std::int32_t>(value);
  return {};
}

// ---- Layouts -----------------------------------------------------------------------------------

LayoutResult LayoutScan::ReadLayout() {
  LayoutNumber bits;
  if (LayoutResult fault = TakeNumber(bits)) return fault;
  SkipBlanks();
  if (!IsAt('{')) return Expected("\"{\"", bits.span);
  ++at_;
  if (LayoutResult fault = ReadGroups()) return fault;
  layouts_.push_back(bits);
  return {};
}

// Two groups of one text at most, then three of several.
LayoutResult LayoutScan::ReadGroups() {
  for (int i = 0; i < 5; ++i) {
    if (i > 0 && !AtEnd() && !IsAt('}')) ++at_;
    const Group group = ReadGroup();
    if (group.fault && !IsAt('}')) return group.fault;
    const bool holdsOneText = i < 2;
    if (holdsOneText && group.texts.size() > 1 && !IsAt('}')) {
      return LayoutFault{group.texts[1], fmt::format("the {} group holds one text at most",
                                                     i == 0 ? "first" : "second")};
    }
    const std::size_t used =
        holdsOneText ? std::min<std::size_t>(group.texts.size(), 1) : group.texts.size();
    if (LayoutResult fault = CheckTexts(
            {group.texts.begin(), group.texts.begin() + static_cast<std::ptrdiff_t>(used)})) {
      return fault;
    }
    if (AtEnd()) return Expected("\"}\"", group.last);
  }
  return {};
}

// Stops at the end, in front of a "|" or after the last text that a group may have.
LayoutScan::Group LayoutScan::ReadGroup() {
  Group group;
  Span& before = group.last;
  before = {at_ - 1, at_};
  const auto stop = [&](LayoutResult fault) {
    group.fault = std::move(fault);
    return group;
  };
  while (group.texts.size() < static_cast<std::size_t>(kLayoutListMax)) {
    SkipBlanks();
    if (AtEnd() || IsAt('|')) break;
    if (!group.texts.empty()) {
      if (!IsAt(',')) return stop(Expected("\",\", \"|\" or \"}\"", before));
      before = {at_, at_ + 1};
      ++at_;
      SkipBlanks();
      if (AtEnd()) return stop(Expected("a text in double quotes", before));
    }
    if (!IsAt('"')) {
      return stop(Expected(group.texts.empty() ? "a text in double quotes, \"|\" or \"}\""
                                               : "a text in double quotes",
                           before));
    }
    Span text;
    if (LayoutResult fault = TakeQuoted(text)) return stop(std::move(fault));
    group.texts.push_back(text);
    before = {text.begin - 1, text.end + 1};
  }
  return group;
}

// REQUIRES: the cursor stands on the opening quote.
LayoutResult LayoutScan::TakeQuoted(Span& text) {
  const std::size_t quote = at_++;
  const std::size_t closing = bytes_.find('"', at_);
  if (closing >= end_) {
    at_ = end_;
    const std::size_t lineEnd = std::min(bytes_.find('\n', quote), end_);
    return LayoutFault{{quote, lineEnd}, "the quote that opens here is not closed"};
  }
  text = {at_, closing};
  at_ = closing + 1;
  return {};
}

LayoutResult LayoutScan::CheckTexts(const std::vector<Span>& texts) const {
  for (const Span& text : texts) {
    if (!IsConvertible(TextUpToNul(text))) {
      return LayoutFault{text, "the text is no valid UTF-8", kBtkBadText};
    }
  }
  return {};
}

// ---- Bits --------------------------------------------------------------------------------------

void LayoutScan::CheckBits() {
  const bool isGiven = bits_.span.begin > 0;
  std::size_t wordEnd = bits_.span.end;
  while (isGiven && wordEnd < bytes_.size() && !IsLayoutSpace(bytes_[wordEnd]))
    ++wordEnd;
  const Span word{bits_.span.begin, wordEnd};
  if (isGiven && bits_.span.Size() == 0) {
    Tell(Rule::kLayoutBits, kBtkOk, word,
         fmt::format("{}: a number is expected, and {} bits are taken", Told(Text(word)), kBits64));
  }
  for (const LayoutNumber& layout : layouts_)
    CheckLayoutBits(layout);
}

void LayoutScan::CheckLayoutBits(const LayoutNumber& layout) {
  const std::int32_t fileBits = bits_.value != 0 ? bits_.value : kBits64;
  const std::int32_t bits = layout.value != 0 ? layout.value : fileBits;
  if (bits == kBits32 || bits == kBits64 || bits == kBits3264) return;
  if (bits == kBits6432) {
    if (fileBits == kBits32) return;
    Tell(Rule::kLayoutBits, kBtkOk, layout.span,
         fmt::format("this layout is passed over: {} bits need \"bits = {}\"", bits, kBits32));
  } else {
    Tell(Rule::kLayoutBits, kBtkOk, layout.span,
         fmt::format("this layout is passed over: its bits are {}, and 32, 64, 3264 or 6432 are "
                     "expected",
                     bits));
  }
  if (layout.value == 0) {
    text_.findings.back().related.push_back({PlaceOf(bits_.span), "the bits of the file"});
  }
}

}  // namespace tarnmf::check
