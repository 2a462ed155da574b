// SPDX-License-Identifier: Apache-2.0
#include "check/layout_file.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <utf8.h>
#include <utility>

#include "check/layout_scan.h"
#include "check/suggestions.h"
#include "check/wording.h"
#include "platform/text.h"

namespace tarnmf::check {
namespace {

constexpr std::size_t kBlockSize = 2048;
constexpr std::size_t kLongestKey = 127;
constexpr std::size_t kLongestOperator = 15;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}
bool IsOperator(char character) {
  return character == '=' || character == '+';
}
bool IsWord(char character) {
  return !IsLayoutSpace(character) && !IsOperator(character);
}

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(), btkAsciiToLower<char>);
  return lower;
}

}  // namespace

const LayoutScan::Statement LayoutScan::kStatements[] = {
    {"base", "=", &LayoutScan::ReadBase},      {"scope", "=", &LayoutScan::ReadScope},
    {"bits", "=", &LayoutScan::ReadBits},      {"version", "=", &LayoutScan::SkipVersion},
    {"layout", "+=", &LayoutScan::ReadLayout},
};

// As it can be told, whatever bytes it holds.
std::string Told(std::string_view bytes) {
  std::string text;
  utf8::replace_invalid(bytes.begin(), bytes.end(), std::back_inserter(text), U'?');
  const std::string quoted = Quoted(text);
  // A text in quotes needs none of ours.
  return text.starts_with('"') ? quoted.substr(1, quoted.size() - 2) : quoted;
}

// ---- Places ------------------------------------------------------------------------------------

Place LayoutScan::PlaceOf(Span span) const {
  const std::size_t mark = text_.source.MarkSize();
  return {&text_.source,
          {std::max<std::size_t>(span.begin, mark) - mark,
           std::max<std::size_t>(span.end, mark) - mark}};
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

LayoutFault LayoutScan::Expected(std::string what, Span before) const {
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
  const LayoutResult fault = ReadStatement();
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
LayoutResult LayoutScan::ReadStatement() {
  const bool isFirst = at_ == 0;
  const Span key = TakeRun(IsLetter);
  if (key.Size() > kLongestKey) {
    return LayoutFault{key, fmt::format("a key has at most {} letters", kLongestKey)};
  }
  if (AtEnd())
    return LayoutFault{
        key, fmt::format("an operator and a value are expected after {}", Told(Text(key))),
        kBtkMalformed, true};
  SkipBlanks();
  const Span assignment = TakeRun(IsOperator);
  if (assignment.Size() > kLongestOperator) {
    return LayoutFault{assignment,
                       fmt::format("an operator has at most {} characters; a comment begins "
                                   "with \"#\"",
                                   kLongestOperator)};
  }
  const Span written = assignment.Size() > 0 ? assignment : key;
  SkipBlanks();
  if (AtEnd()) {
    return LayoutFault{
        written,
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

// A value may stand on the next line. Where a statement stands there, it is taken for the value and
// nothing of it is read, or refused.
LayoutResult LayoutScan::CheckNextLine(const Statement& statement, Span assignment) {
  if (bytes_.find('\n', assignment.end) >= at_ || !IsLetter(bytes_[at_])) return {};
  const std::string message = fmt::format("a value is expected after \"{}\"", Text(assignment));
  if (statement.key == "base" || statement.key == "layout") return LayoutFault{assignment, message};
  if (statement.key == "version" || statement.key == "bits") {
    Tell(Rule::kLayoutKeyUnknown, kBtkOk, assignment,
         message + ": the next line is passed over with this one");
  }
  return {};
}

LayoutResult LayoutScan::ReadValue(const Statement& statement, Span key, Span assignment) {
  if (statement.readValue == &LayoutScan::ReadBase) text_.basePath.clear();
  if (Text(assignment) == statement.assignment) {
    const LayoutResult fault = CheckNextLine(statement, assignment);
    return fault ? fault : (this->*statement.readValue)();
  }
  if (assignment.Size() == 0) return Expected(fmt::format("\"{}\"", statement.assignment), key);
  return LayoutFault{assignment, fmt::format("\"{}\" takes \"{}\", not \"{}\"", statement.key,
                                             statement.assignment, Text(assignment))};
}

std::unique_ptr<LayoutFileText> ReadLayout(std::string path, const std::string& directory,
                                           std::string bytes) {
  auto text = std::make_unique<LayoutFileText>(Source::OfText(std::move(path), std::move(bytes)));
  LayoutScan(*text, directory).Run();
  return text;
}

}  // namespace tarnmf::check
