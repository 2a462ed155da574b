// SPDX-License-Identifier: Apache-2.0
// Reads one layout file to its end.
#ifndef CHECK_LAYOUT_SCAN_H
#define CHECK_LAYOUT_SCAN_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "check/installation.h"
#include "platform/filesystem.h"
#include "repository/quoted_list.h"

namespace tarnmf::check {

// Why a statement cannot be read.
struct LayoutFault {
  Span span;
  std::string message;
  BtkErrorT code = kBtkMalformed;
  bool breaksOff = false;  // the text ends where more is expected
};
using LayoutResult = std::optional<LayoutFault>;  // nothing: it can be read

struct LayoutNumber {
  std::int32_t value = 0;
  Span span;  // empty: there are no digits
};

// Bytes of the file as they can be told, whatever they are.
std::string Told(std::string_view bytes);

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
    LayoutResult (LayoutScan::*readValue)();
  };
  static const Statement kStatements[];

  struct Group {
    std::vector<Span> texts;  // without their quotes
    Span last;                // what it ends with
    bool isSound = true;      // false: what follows is none of a group's
    LayoutResult fault;       // why it is not
  };

  void ReadLine();
  LayoutResult ReadStatement();
  LayoutResult ReadValue(const Statement& statement, Span key, Span assignment);
  void TellUnknownKey(Span key, Span assignment);
  LayoutResult CheckNextLine(const Statement& statement, Span assignment);
  LayoutResult ReadBase();
  LayoutResult ReadScope();
  LayoutResult ReadBits();
  LayoutResult SkipVersion();
  LayoutResult ReadLayout();
  LayoutResult ReadGroups();
  Group ReadGroup();
  LayoutResult TakeQuoted(Span& text);
  LayoutResult TakeNumber(LayoutNumber& number);
  LayoutResult CheckTexts(const std::vector<Span>& texts) const;
  void CheckBits();
  void CheckLayoutBits(const LayoutNumber& layout);

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
  LayoutFault Expected(std::string what, Span before) const;
  void Tell(Rule rule, BtkErrorT code, Span span, std::string message);
  Place PlaceOf(Span span) const;

  LayoutFileText& text_;
  const std::string& bytes_;
  btkFSEntry file_;
  std::size_t at_ = 0;
  std::size_t end_ = 0;  // of the block
  std::vector<LayoutNumber> layouts_;
  LayoutNumber bits_;
};

}  // namespace tarnmf::check

#endif  // CHECK_LAYOUT_SCAN_H
