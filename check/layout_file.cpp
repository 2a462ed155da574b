#include "check/layout_file.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <iterator>
#include <limits>
#include <optional>
#include <string_view>
#include <utf8.h>
#include <utility>
#include <vector>

#include "check/suggestions.h"
#include "check/wording.h"
#include "platform/filesystem.h"
#include "platform/text.h"
#include "repository/layout_file.h"
#include "repository/quoted_list.h"
#include "support/owned.h"

namespace tarnmf::check {
namespace {

constexpr std::size_t kBlockSize = 2048;
constexpr std::size_t kLongestKey = 127;
constexpr std::size_t kLongestOperator = 15;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
// The address bits that mean something, and what they are when a file says nothing.
constexpr std::int32_t kBits32 = 32;
constexpr std::int32_t kBits64 = 64;
constexpr std::int32_t kBits3264 = 3264;
constexpr std::int32_t kBits6432 = 6432;

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}
bool IsOperator(char character) {
  return character == '=' || character == '+';
}
bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}
bool IsWord(char character) {
  return !IsLayoutSpace(character) && !IsOperator(character);
}

// As it can be told, whatever bytes it holds.
std::string Told(std::string_view bytes) {
  std::string text;
  utf8::replace_invalid(bytes.begin(), bytes.end(), std::back_inserter(text), U'?');
  const std::string quoted = Quoted(text);
  // A text in quotes needs none of ours.
  return text.starts_with('"') ? quoted.substr(1, quoted.size() - 2) : quoted;
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), btkAsciiToLower<char>);
  return lower;
}

// Whether the platform can make a wide text of it.
bool IsConvertible(const std::string& text) {
  WideText wide;
  return btkStrMultibyteToWideAlloc(Out(wide), nullptr, text.c_str(), kBtkWholeText) == kBtkOk;
}

// Why a statement cannot be read.
struct Fault {
  Span span;
  std::string message;
  BtkErrorT code = kBtkMalformed;
  bool breaksOff = false;  // the text ends where more is expected
};
using Result = std::optional<Fault>;  // nothing: it can be read

struct Number {
  std::int32_t value = 0;
  Span span;  // empty: there are no digits
};

class LayoutScan {
 public:
  LayoutScan(LayoutFileText& text, const std::string& directory)
      : text_(text), bytes_(text.source.Bytes()), file_(directory.c_str()) {
    file_ /= ".installed";
    text_.basePath = file_.GetHead().GetHead().Path().NarrowText();
  }

  void Run();

 private:
  struct Statement {
    std::string_view key;
    std::string_view assignment;  // the operator that it must have
    Result (LayoutScan::*readValue)();
  };
  static const Statement kStatements[];

  struct Group {
    std::vector<Span> texts;  // without their quotes
    Span last;                // what it ends with
    bool isSound = true;      // false: what follows is none of a group's
    Result fault;             // why it is not
  };

  void ReadLine();
  Result ReadStatement();
  Result ReadValue(const Statement& statement, Span key, Span assignment);
  void TellUnknownKey(Span key, Span assignment);
  Result ReadBase();
  Result ReadScope();
  Result ReadBits();
  Result SkipVersion();
  Result ReadLayout();
  Result ReadGroups();
  Group ReadGroup();
  Result TakeQuoted(Span& text);
  Result TakeNumber(Number& number);
  Result CheckTexts(const std::vector<Span>& texts) const;
  void CheckBits();
  void CheckLayoutBits(const Number& layout);

  template <class Belongs>
  Span TakeRun(Belongs belongs) {
    const std::size_t begin = at_;
    while (at_ < end_ && belongs(bytes_[at_]))
      ++at_;
    return {begin, at_};
  }
  void SkipBlanks() { TakeRun(IsLayoutSpace); }
  bool AtEnd() const { return at_ == end_; }
  bool IsAt(char character) const { return !AtEnd() && bytes_[at_] == character; }
  std::string_view Text(Span span) const {
    return std::string_view(bytes_).substr(span.begin, span.Size());
  }
  // As the library's strings end: with the first NUL.
  std::string TextUpToNul(Span span) const { return std::string(Text(span)).c_str(); }

  // The word at the cursor; where only blanks are left on the line, what stands before them.
  Span Unexpected(Span before) const;
  Fault Expected(std::string what, Span before) const;
  void Tell(Rule rule, BtkErrorT code, Span span, std::string message);
  Place PlaceOf(Span span) const;

  LayoutFileText& text_;
  const std::string& bytes_;
  btkFSEntry file_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;  // of the block
  std::vector<Number> layouts_;
  Number bits_;
};

const LayoutScan::Statement LayoutScan::kStatements[] = {
    {"base", "=", &LayoutScan::ReadBase},      {"scope", "=", &LayoutScan::ReadScope},
    {"bits", "=", &LayoutScan::ReadBits},      {"version", "=", &LayoutScan::SkipVersion},
    {"layout", "+=", &LayoutScan::ReadLayout},
};

// ---- Places ------------------------------------------------------------------------------------

Place LayoutScan::PlaceOf(Span span) const {
  const std::size_t mark = text_.source.MarkSize();
  return {&text_.source, {std::max(span.begin, mark) - mark, std::max(span.end, mark) - mark}};
}

void LayoutScan::Tell(Rule rule, BtkErrorT code, Span span, std::string message) {
  text_.findings.push_back(Found(rule, code, PlaceOf(span), std::move(message)));
}

Span LayoutScan::Unexpected(Span before) const {
  const auto isLineFeed = [](char character) { return character == '\n'; };
  const auto first = bytes_.begin();
  if (AtEnd() || std::any_of(first + static_cast<std::ptrdiff_t>(before.end),
                             first + static_cast<std::ptrdiff_t>(at_), isLineFeed)) {
    return before;
  }
  std::size_t end = at_ + 1;
  while (end < end_ && !IsLayoutSpace(bytes_[end]))
    ++end;
  return {at_, end};
}

Fault LayoutScan::Expected(std::string what, Span before) const {
  const Span span = Unexpected(before);
  std::string message = std::move(what) + " is expected";
  if (span == before) {
    message += fmt::format(" after {}", Told(Text(before)));
  } else {
    message += fmt::format(", not {}", Told(Text(span)));
  }
  return {span, std::move(message), kBtkMalformed, AtEnd()};
}

// ---- Lines -------------------------------------------------------------------------------------

// The file is read in blocks, and nothing is carried over from one block into the next.
void LayoutScan::Run() {
  for (std::size_t begin = 0; begin < bytes_.size(); begin += kBlockSize) {
    end_ = std::min(begin + kBlockSize, bytes_.size());
    at_ = std::max(at_, begin);
    if (at_ >= end_) continue;
    for (SkipBlanks(); at_ < end_; SkipBlanks())
      ReadLine();
  }
  CheckBits();
  std::stable_sort(text_.findings.begin(), text_.findings.end(),
                   [](const Finding& left, const Finding& right) {
                     return left.place.span.begin < right.place.span.begin;
                   });
  text_.isRefused =
      std::any_of(text_.findings.begin(), text_.findings.end(),
                  [](const Finding& finding) { return finding.severity == Severity::kError; });
}

// A statement with the rest of its line.
void LayoutScan::ReadLine() {
  const std::size_t begin = at_;
  const Result fault = ReadStatement();
  const std::size_t lineFeed = bytes_.find('\n', fault ? fault->span.begin : at_);
  at_ = lineFeed == std::string::npos ? bytes_.size() : lineFeed + 1;
  const bool reachesEnd = lineFeed >= end_ || (fault && fault->breaksOff);
  const bool isRead = !fault || fault->code == kBtkMalformed;
  if (reachesEnd && end_ < bytes_.size() && isRead) {
    const std::size_t stop = std::min(lineFeed, bytes_.size());
    Tell(Rule::kLayoutSyntax, kBtkMalformed, {begin, stop},
         fmt::format("the statement must end within a block of {} bytes of the file, and crosses "
                     "byte {}",
                     kBlockSize, end_));
    return;
  }
  if (fault) Tell(Rule::kLayoutSyntax, fault->code, fault->span, fault->message);
  if (lineFeed != std::string::npos || (fault && fault->breaksOff)) return;
  const std::size_t stop = bytes_.size();
  Tell(Rule::kLineNotEnded, kBtkMalformed, {stop, stop}, "the last line must end with a line feed");
  text_.findings.back().suggestions.push_back(
      {"Add a line feed", true, {{PlaceOf({stop, stop}).span, "\n"}}});
}

// The white space around the operator may hold line ends. So a line whose key is unknown and that
// has nothing else swallows the next line.
Result LayoutScan::ReadStatement() {
  const bool isFirst = at_ == 0;
  const Span key = TakeRun(IsLetter);
  if (key.Size() > kLongestKey) {
    return Fault{key, fmt::format("a key has at most {} letters", kLongestKey)};
  }
  if (AtEnd())
    return Fault{key, fmt::format("an operator and a value are expected after {}", Told(Text(key))),
                 kBtkMalformed, true};
  SkipBlanks();
  const Span assignment = TakeRun(IsOperator);
  if (assignment.Size() > kLongestOperator) {
    return Fault{assignment, fmt::format("an operator has at most {} characters; a comment begins "
                                         "with \"#\"",
                                         kLongestOperator)};
  }
  const Span written = assignment.Size() > 0 ? assignment : key;
  SkipBlanks();
  if (AtEnd()) {
    return Fault{written,
                 fmt::format("{} is expected after \"{}\"",
                             assignment.Size() > 0 ? "a value" : "an operator", Text(written)),
                 kBtkMalformed, true};
  }
  for (const Statement& statement : kStatements) {
    if (statement.key == Text(key)) return ReadValue(statement, key, assignment);
  }
  if (isFirst && bytes_.starts_with(kByteOrderMark)) {
    Tell(Rule::kLayoutKeyUnknown, kBtkOk, {0, kByteOrderMark.size()},
         "a byte order mark makes a comment of the first line; write the file without it");
  }
  TellUnknownKey(key, assignment);
  return {};
}

void LayoutScan::TellUnknownKey(Span key, Span assignment) {
  const auto lineFeed = bytes_.find('\n', key.end);
  const bool swallows = lineFeed < at_;
  if (key.Size() == 0) {
    if (assignment.Size() > 0 && swallows) {
      Tell(Rule::kLayoutKeyUnknown, kBtkOk, assignment,
           fmt::format("the line after \"{}\" is passed over with it; a comment begins with \"#\"",
                       Text(assignment)));
    }
    return;
  }
  Span name = key;
  while (name.end < bytes_.size() && IsWord(bytes_[name.end]))
    ++name.end;
  std::string message =
      fmt::format("key {} is not known, and the line is passed over", Told(Text(name)));
  if (swallows) message += " with the next one";
  CloseNames close(Text(name));
  for (const Statement& statement : kStatements)
    close.Offer(statement.key);
  const bool isCase = close.IsOneStepAway() && Lower(Text(name)) == close.Best()[0];
  if (isCase) message += "; keys are in lower case";
  message += DidYouMean(close.Best(), Quoted);
  Tell(Rule::kLayoutKeyUnknown, kBtkOk, name, std::move(message));
  for (const std::string_view meant : close.Best()) {
    text_.findings.back().suggestions.push_back(
        Replace(PlaceOf(name).span, Text(name), std::string(meant)));
  }
}

Result LayoutScan::ReadValue(const Statement& statement, Span key, Span assignment) {
  if (statement.readValue == &LayoutScan::ReadBase) text_.basePath.clear();
  if (Text(assignment) == statement.assignment) return (this->*statement.readValue)();
  if (assignment.Size() == 0) return Expected(fmt::format("\"{}\"", statement.assignment), key);
  return Fault{assignment, fmt::format("\"{}\" takes \"{}\", not \"{}\"", statement.key,
                                       statement.assignment, Text(assignment))};
}

// ---- Values ------------------------------------------------------------------------------------

Result LayoutScan::ReadBase() {
  Span text;
  if (!IsAt('"')) return Expected("a text in double quotes", {at_, at_});
  if (Result fault = TakeQuoted(text)) return fault;
  const std::string written = TextUpToNul(text);
  btkFSEntry base = file_.GetHead();
  base /= written.c_str();
  base += "/";
  if (!IsConvertible(base.Path().NarrowText())) {
    return Fault{text, "the folder's name is no valid UTF-8", kBtkBadText};
  }
  text_.base = written;
  text_.basePlace = PlaceOf(text).span;
  text_.basePath = base.Path().NarrowText();
  return {};
}

Result LayoutScan::ReadScope() {
  const char* const text = bytes_.data() + at_;
  const char* end = nullptr;
  if (btkUniIdParse(&text_.scope, text, end_ - at_, &end, kBtkUniIdDashed) == kBtkOk) {
    at_ += static_cast<std::size_t>(end - text);
    return {};
  }
  const Span word = Unexpected({at_, at_});
  return Fault{word, fmt::format("{}: an id of {} characters in the form 8-4-4-4-12 is expected, "
                                 "these are {}",
                                 Told(Text(word)), kBtkUniIdDashedLength, word.Size())};
}

Result LayoutScan::ReadBits() {
  if (Result fault = TakeNumber(bits_)) return fault;
  text_.bits = bits_.value;
  return {};
}

Result LayoutScan::SkipVersion() {
  const auto belongs = [](char character) {
    return character != '\0' && std::strchr(" \t\r\n", character) == nullptr;
  };
  TakeRun([](char character) { return character == ' ' || character == '\t'; });
  if (TakeRun(belongs).Size() == 0) return Expected("a value", {at_, at_});
  return {};
}

// What the C library's `strtol` takes. A text without digits gives 0.
Result LayoutScan::TakeNumber(Number& number) {
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
    return Fault{number.span,
                 fmt::format("{}: a number within 32 bits is expected", Told(Text(number.span)))};
  }
  number.value = static_cast<std::int32_t>(value);
  return {};
}

// ---- Layouts -----------------------------------------------------------------------------------

Result LayoutScan::ReadLayout() {
  Number bits;
  if (Result fault = TakeNumber(bits)) return fault;
  SkipBlanks();
  if (!IsAt('{')) return Expected("\"{\"", bits.span);
  ++at_;
  if (Result fault = ReadGroups()) return fault;
  layouts_.push_back(bits);
  return {};
}

// Two groups of one text at most, then three of several.
Result LayoutScan::ReadGroups() {
  for (int i = 0; i < 5; ++i) {
    if (i > 0 && !AtEnd() && !IsAt('}')) ++at_;
    const Group group = ReadGroup();
    if (group.fault && !IsAt('}')) return group.fault;
    const bool holdsOneText = i < 2;
    if (holdsOneText && group.texts.size() > 1 && !IsAt('}')) {
      return Fault{group.texts[1],
                   fmt::format("the {} group holds one text at most", i == 0 ? "first" : "second")};
    }
    const std::size_t used =
        holdsOneText ? std::min<std::size_t>(group.texts.size(), 1) : group.texts.size();
    if (Result fault = CheckTexts(
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
  const auto stop = [&](Result fault) {
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
    if (Result fault = TakeQuoted(text)) return stop(std::move(fault));
    group.texts.push_back(text);
    before = {text.begin - 1, text.end + 1};
  }
  return group;
}

// REQUIRES: the cursor stands on the opening quote.
Result LayoutScan::TakeQuoted(Span& text) {
  const std::size_t quote = at_++;
  const std::size_t closing = bytes_.find('"', at_);
  if (closing >= end_) {
    at_ = end_;
    const std::size_t lineEnd = std::min(bytes_.find('\n', quote), end_);
    return Fault{{quote, lineEnd}, "the quote that opens here is not closed"};
  }
  text = {at_, closing};
  at_ = closing + 1;
  return {};
}

Result LayoutScan::CheckTexts(const std::vector<Span>& texts) const {
  for (const Span& text : texts) {
    if (!IsConvertible(TextUpToNul(text))) {
      return Fault{text, "the text is no valid UTF-8", kBtkBadText};
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
  for (const Number& layout : layouts_)
    CheckLayoutBits(layout);
}

void LayoutScan::CheckLayoutBits(const Number& layout) {
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

}  // namespace

std::unique_ptr<LayoutFileText> ReadLayout(std::string path, const std::string& directory,
                                           std::string bytes) {
  auto text = std::make_unique<LayoutFileText>(Source::OfText(std::move(path), std::move(bytes)));
  LayoutScan(*text, directory).Run();
  return text;
}

}  // namespace tarnmf::check
