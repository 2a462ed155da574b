// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/report_text.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fmt/format.h>
#include <iterator>
#include <string_view>

#include "check/settings.h"
#include "tools/tarnmf/printable.h"
#include "tools/tarnmf/standard_streams.h"

namespace tool {
namespace {

using namespace tarnmf::check;

// By Severity; the last one ends a colour.
constexpr std::string_view kColors[] = {"", "\x1b[36m", "\x1b[33m", "\x1b[31m"};
constexpr std::string_view kBold = "\x1b[1m";
constexpr std::string_view kGreen = "\x1b[32m";
constexpr std::string_view kPlain = "\x1b[0m";

// A line of more bytes is cut to these on either side of a place.
constexpr std::size_t kLongLine = 200;
constexpr std::size_t kBytesBefore = 80;
constexpr std::size_t kBytesAfter = 120;

std::size_t Characters(std::string_view printable) {
  return static_cast<std::size_t>(
      std::count_if(printable.begin(), printable.end(), [](char c) { return !Continues(c); }));
}

// The part of a line that is shown, and where the place begins in it.
struct Excerpt {
  std::string_view before;
  std::string_view marked;
  std::string_view after;
  bool isCutBefore = false;
  bool isCutAfter = false;
};

Excerpt ExcerptOf(const Source& source, Span place) {
  const Span line = source.Line(source.At(place.begin).line);
  const std::size_t begin = std::min(place.begin, line.end);
  const std::size_t end = std::clamp<std::size_t>(place.end, begin, line.end);
  const std::string& text = source.Text();
  Span shown = line;
  if (line.Size() > kLongLine) {
    shown = {begin - std::min(begin - line.begin, kBytesBefore),
             begin + std::min(line.end - begin, kBytesAfter)};
  }
  while (shown.begin < begin && Continues(text[shown.begin]))
    ++shown.begin;
  while (shown.end < line.end && shown.end > begin && Continues(text[shown.end]))
    --shown.end;
  const std::size_t markedEnd = std::min<std::size_t>(end, shown.end);
  return {source.Text({shown.begin, begin}), source.Text({begin, markedEnd}),
          source.Text({markedEnd, shown.end}), shown.begin != line.begin, shown.end != line.end};
}

class TextWriter {
 public:
  explicit TextWriter(const TextForm& form) : form_(form) {}

  std::string Write(const Verdict& verdict) {
    for (const Finding& finding : verdict.findings) {
      if (++counts_[static_cast<std::size_t>(finding.rule)] <= form_.most) Write(finding);
    }
    for (const RuleT& rule : Catalogue()) {
      const std::size_t count = counts_[static_cast<std::size_t>(rule.rule)];
      if (count > form_.most) Append("and {} more [{}]\n", count - form_.most, rule.name);
    }
    if (!verdict.findings.empty()) Append("{}\n", CountText(verdict));
    return std::move(text_);
  }

 private:
  template <class... Arguments>
  void Append(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    fmt::format_to(std::back_inserter(text_), format, std::forward<Arguments>(arguments)...);
  }

  std::string_view In(std::string_view color) const { return form_.isColored ? color : ""; }

  std::string PlaceText(const Place& place) const {
    const Position at = place.source->At(place.span.begin);
    return fmt::format("{}{}:{}:{}:{}", In(kBold), Printable(place.source->Path()), at.line,
                       at.column, In(kPlain));
  }

  void Write(const Finding& finding) {
    const std::string_view color = In(kColors[static_cast<std::size_t>(finding.severity)]);
    const std::string_view name = Describe(finding.rule).name;
    Append("{} {}{}:{} {}", PlaceText(finding.place), color, LevelName(finding.severity),
           In(kPlain), Printable(finding.message));
    if (finding.code == kBtkOk) {
      Append(" [{}]\n", name);
    } else {
      Append(" [{}, {}]\n", name, static_cast<int>(finding.code));
    }
    WriteLine(finding.place, color);
    for (const Related& related : finding.related)
      Append("{} note: {}\n", PlaceText(related.place), Printable(related.message));
    for (const Suggestion& suggestion : finding.suggestions) {
      Append("{}help:{} {}{}\n", In(kGreen), In(kPlain), Printable(suggestion.title),
             suggestion.safe ? " (--fix does it)" : "");
    }
  }

  void WriteLine(const Place& place, std::string_view color) {
    if (place.source->Text().empty()) return;
    const Excerpt excerpt = ExcerptOf(*place.source, place.span);
    const std::string before = Printable(excerpt.before);
    const std::string marked = Printable(excerpt.marked);
    const std::string_view cut = excerpt.isCutBefore ? "..." : "";
    Append("  {}{}{}{}{}\n", cut, before, marked, Printable(excerpt.after),
           excerpt.isCutAfter ? "..." : "");
    Append("  {:{}}{}{}{:^<{}}{}\n", "", cut.size(), Indent(before), color, "",
           std::max<std::size_t>(Characters(marked), 1), In(kPlain));
  }

  // As wide as the text on every terminal: tabs stay tabs.
  static std::string Indent(std::string_view printable) {
    std::string indent;
    for (const char character : printable) {
      if (!Continues(character)) indent += character == '\t' ? '\t' : ' ';
    }
    return indent;
  }

  const TextForm& form_;
  std::string text_;
  std::array<std::size_t, kRuleCount> counts_{};
};

}  // namespace

std::string TextReport(const Verdict& verdict, const TextForm& form) {
  return TextWriter(form).Write(verdict);
}

std::string CountText(const Verdict& verdict) {
  std::string text;
  for (const auto& [severity, name] :
       {std::pair(Severity::kError, "error"), std::pair(Severity::kWarning, "warning"),
        std::pair(Severity::kInfo, "info")}) {
    const std::size_t count = verdict.Count(severity);
    if (count == 0) continue;
    const bool isPlural = count > 1 && severity != Severity::kInfo;
    text += fmt::format("{}{} {}{}", text.empty() ? "" : ", ", count, name, isPlural ? "s" : "");
  }
  return text;
}

bool OutputIsColored() {
  const char* const refusal = std::getenv("NO_COLOR");
  if (refusal != nullptr && *refusal != '\0') return false;
  return TerminalShowsColors();
}

}  // namespace tool
