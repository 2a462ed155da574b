// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/unified_diff.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <iterator>
#include <unordered_map>
#include <vector>

namespace tool {
namespace {

constexpr std::size_t kContext = 3;

using Lines = std::vector<std::string_view>;

// Each with its line feed, which the last one may lack.
Lines LinesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

// Lines [a, aEnd) of the one text become the lines [b, bEnd) of the other.
struct Change {
  std::size_t a, aEnd;
  std::size_t b, bEnd;
};

struct Match {
  std::size_t a, b;
};

class Comparison {
 public:
  Comparison(const Lines& a, const Lines& b) : a_(a), b_(b) {}

  // Lines that stand once in both texts tie them together; what lies between two of them is compared
  // from both its ends.
  std::vector<Change> Run() {
    Change rest = {0, a_.size(), 0, b_.size()};
    for (const Match& match : Longest(Trimmed(rest))) {
      Compare({rest.a, match.a, rest.b, match.b});
      rest.a = match.a + 1;
      rest.b = match.b + 1;
    }
    Compare(rest);
    return std::move(changes_);
  }

 private:
  Change Trimmed(Change part) const {
    while (part.a < part.aEnd && part.b < part.bEnd && a_[part.a] == b_[part.b])
      ++part.a, ++part.b;
    while (part.a < part.aEnd && part.b < part.bEnd && a_[part.aEnd - 1] == b_[part.bEnd - 1])
      --part.aEnd, --part.bEnd;
    return part;
  }

  void Compare(Change part) {
    part = Trimmed(part);
    if (part.a < part.aEnd || part.b < part.bEnd) changes_.push_back(part);
  }

  // The lines that stand once in either, in the order of the first text.
  std::vector<Match> Unique(const Change& part) const {
    struct Places {
      std::size_t inA = 0, inB = 0;
      std::size_t a = 0, b = 0;
    };
    std::unordered_map<std::string_view, Places> places;
    for (std::size_t i = part.a; i < part.aEnd; ++i) {
      Places& place = places[a_[i]];
      ++place.inA;
      place.a = i;
    }
    for (std::size_t i = part.b; i < part.bEnd; ++i) {
      Places& place = places[b_[i]];
      ++place.inB;
      place.b = i;
    }
    std::vector<Match> matches;
    for (const auto& [line, place] : places) {
      if (place.inA == 1 && place.inB == 1) matches.push_back({place.a, place.b});
    }
    std::sort(matches.begin(), matches.end(),
              [](const Match& one, const Match& other) { return one.a < other.a; });
    return matches;
  }

  // The longest run of them that has the order of both texts.
  std::vector<Match> Longest(const Change& part) const {
    const std::vector<Match> matches = Unique(part);
    constexpr std::size_t kNone = SIZE_MAX;
    std::vector<std::size_t> ends;  // of the runs of each length, the one that ends first
    std::vector<std::size_t> before(matches.size(), kNone);
    for (std::size_t i = 0; i < matches.size(); ++i) {
      const auto end =
          std::lower_bound(ends.begin(), ends.end(), matches[i].b,
                           [&](std::size_t one, std::size_t b) { return matches[one].b < b; });
      if (end != ends.begin()) before[i] = *std::prev(end);
      if (end == ends.end()) {
        ends.push_back(i);
      } else {
        *end = i;
      }
    }
    std::vector<Match> longest;
    for (std::size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = before[i])
      longest.push_back(matches[i]);
    std::reverse(longest.begin(), longest.end());
    return longest;
  }

  const Lines& a_;
  const Lines& b_;
  std::vector<Change> changes_;
};

class DiffWriter {
 public:
  DiffWriter(const Lines& a, const Lines& b) : a_(a), b_(b) {}

  std::string Write(const std::vector<Change>& changes) {
    for (auto first = changes.begin(); first != changes.end();) {
      auto last = first + 1;
      while (last != changes.end() && last->a - std::prev(last)->aEnd <= 2 * kContext)
        ++last;
      WriteHunk(first, last);
      first = last;
    }
    return std::move(text_);
  }

 private:
  using Iterator = std::vector<Change>::const_iterator;

  void WriteHunk(Iterator first, Iterator last) {
    const std::size_t before = std::min(first->a, kContext);
    const Change& end = *std::prev(last);
    const std::size_t behind = std::min(a_.size() - end.aEnd, kContext);
    fmt::format_to(std::back_inserter(text_), "@@ -{} +{} @@\n",
                   Range(first->a - before, end.aEnd + behind),
                   Range(first->b - before, end.bEnd + behind));
    std::size_t shown = first->a - before;
    for (; first != last; ++first) {
      WriteLines(' ', a_, shown, first->a);
      WriteLines('-', a_, first->a, first->aEnd);
      WriteLines('+', b_, first->b, first->bEnd);
      shown = first->aEnd;
    }
    WriteLines(' ', a_, shown, shown + behind);
  }

  // Without any line, the range begins at the one before it.
  static std::string Range(std::size_t begin, std::size_t end) {
    const std::size_t count = end - begin;
    return fmt::format("{},{}", count == 0 ? begin : begin + 1, count);
  }

  void WriteLines(char sign, const Lines& lines, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      text_ += sign;
      text_ += lines[i];
      if (!lines[i].ends_with('\n')) text_ += "\n\\ No newline at end of file\n";
    }
  }

  const Lines& a_;
  const Lines& b_;
  std::string text_;
};

// A path as it stands after "---": in quotes where it holds what would end or confuse the line, with a
// tab after it, which ends it, where it holds blanks.
std::string HeaderPath(std::string_view path) {
  std::string quoted;
  bool isPlain = true;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F) {
      quoted += fmt::format("\\{:03o}", byte);
    } else if (c == '"' || c == '\\') {
      quoted += {'\\', c};
    } else {
      quoted += c;
      continue;
    }
    isPlain = false;
  }
  if (!isPlain) return fmt::format("\"{}\"", quoted);
  return quoted.find(' ') == quoted.npos ? quoted : quoted + '\t';
}

}  // namespace

std::string UnifiedDiff(const std::string& path, std::string_view before, std::string_view after) {
  const Lines a = LinesOf(before);
  const Lines b = LinesOf(after);
  const std::vector<Change> changes = Comparison(a, b).Run();
  if (changes.empty()) return "";
  const std::string shown = HeaderPath(path);
  return fmt::format("--- {0}\n+++ {0}\n", shown) + DiffWriter(a, b).Write(changes);
}

}  // namespace tool
