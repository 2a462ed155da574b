// SPDX-License-Identifier: Apache-2.0
#include "check/allowances.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <optional>
#include <string>
#include <utility>

#include "check/rule_names.h"
#include "check/wording.h"

namespace tarnmf::check {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kSeparators = " \t\r\n,";
constexpr std::string_view kWordEnds = " \t\r\n,(";
constexpr std::string_view kAddress = "tarnmf:";
constexpr std::string_view kAllow = "allow";

// A comment of the document that begins with the address.
class CommentReader {
 public:
  // `text` is the part of the comment that people write.
  CommentReader(Allowances& allowances, Span text)
      : allowances_(allowances), source_(*allowances.source), text_(text), cursor_(text.begin) {}

  void Read(Span comment, Span covered) {
    SkipBlanks();
    if (!Rest().starts_with(kAddress)) return;
    cursor_ += kAddress.size();
    SkipBlanks();
    const Span verb = TakeWord();
    if (source_.Text(verb) != kAllow) {
      TellVerb(verb);
      return;
    }
    AllowComment& whole = allowances_.comments.emplace_back();
    whole.span = comment;
    for (SkipSeparators(); !AtEnd() && Rest().front() != '('; SkipSeparators(), ++whole.named)
      TakeRule(TakeWord(), covered);
    if (whole.named == 0) Tell(verb, "no rule is named after \"allow\"");
    whole.reason = Reason();
  }

 private:
  bool AtEnd() const { return cursor_ >= text_.end; }
  std::string_view Rest() const { return source_.Text({cursor_, text_.end}); }
  void SkipBlanks() { Skip(kBlanks); }
  void SkipSeparators() { Skip(kSeparators); }
  void Skip(std::string_view set) {
    cursor_ += std::min(Rest().find_first_not_of(set), text_.end - cursor_);
  }
  Span TakeWord() {
    const std::size_t begin = cursor_;
    cursor_ += std::min(Rest().find_first_of(kWordEnds), text_.end - cursor_);
    return {begin, cursor_};
  }

  // What stands between the outermost parentheses.
  std::string_view Reason() const {
    std::string_view reason = Rest();
    if (!reason.empty()) reason.remove_prefix(1);
    return reason.substr(0, std::min(reason.rfind(')'), reason.size()));
  }

  void TakeRule(Span name, Span covered) {
    const std::string_view word = source_.Text(name);
    const std::optional<Rule> rule = RuleNamed(word);
    if (!rule) {
      const CloseNames close = CloseRules(word);
      Finding& finding = Tell(
          name, fmt::format("there is no rule \"{}\"{}", word, DidYouMean(close.Best(), Quoted)));
      for (std::string_view other : close.Best())
        finding.suggestions.push_back(Replace(name, word, std::string(other)));
    } else if (!CanBeAllowed(*rule)) {
      Tell(name, fmt::format("\"{}\" cannot be allowed: it stays an error", word));
    } else {
      allowances_.rules.push_back({*rule, name, allowances_.comments.size() - 1, covered, false});
    }
  }

  // Something else may be addressed to readers; only a slip of the pen is told.
  void TellVerb(Span verb) {
    const std::string_view word = source_.Text(verb);
    CloseNames close(word);
    close.Offer(kAllow);
    if (close.Best().empty()) return;
    Finding& finding = Tell(
        verb, fmt::format("\"{}\" says nothing here{}", word, DidYouMean(close.Best(), Quoted)));
    finding.suggestions.push_back(Replace(verb, word, std::string(kAllow)));
  }

  Finding& Tell(Span place, std::string message) {
    allowances_.misspelt.push_back(
        Found(Rule::kAllowUnknown, kBtkOk, {&source_, place}, std::move(message)));
    return allowances_.misspelt.back();
  }

  Allowances& allowances_;
  const Source& source_;
  const Span text_;
  std::size_t cursor_;
};

// A span with its line, when it has that for itself.
Span WithItsLine(const std::string& text, Span span) {
  const std::size_t before =
      text.find_last_not_of(" \t", span.begin == 0 ? text.npos : span.begin - 1);
  const std::size_t begin = span.begin == 0 || before == text.npos ? 0 : before + 1;
  const std::size_t end = std::min(text.find_first_not_of(" \t\r", span.end), text.size());
  const bool startsLine = begin == 0 || text[begin - 1] == '\n';
  if (!startsLine || end == text.size() || text[end] != '\n') return span;
  return {begin, end + 1};
}

constexpr Span kWholeFile = {0, std::numeric_limits<std::uint32_t>::max()};

// The allowances among the children of one node; each covers the element that comes next.
void ReadChildren(const Document& document, NodeId parent, Allowances& allowances) {
  std::size_t open = allowances.rules.size();  // from here on nothing is covered yet
  for (NodeId node : document.ChildrenOf(parent)) {
    const Node& child = document[node];
    if (child.kind == NodeKind::kComment) {
      const Span whole = WithItsLine(document.source->Text(), child.span);
      CommentReader(allowances, child.content).Read(whole, {child.span.end, child.span.end});
    } else if (child.kind == NodeKind::kElement) {
      const Span covered = parent == kDocumentNode ? kWholeFile : child.span;
      for (; open < allowances.rules.size(); ++open)
        allowances.rules[open].covered = covered;
    }
  }
}

// A name of a list with what separates it from the next one, or from the one before.
Span WithItsSeparator(const Source& source, Span name) {
  const std::string& text = source.Text();
  const std::size_t next = text.find_first_not_of(kSeparators, name.end);
  const bool isLast = next == text.npos || text[next] == '(' || text[next] == '-' ||
                      text.find('\n', name.end) < next;
  if (!isLast) return {name.begin, next};
  return {text.find_last_not_of(kSeparators, name.begin - 1) + 1, name.end};
}

// What has to be judged for a rule to be.
Judged Needed(Rule rule) {
  switch (rule) {
    case Rule::kRunnableModuleUnknown:
    case Rule::kHostUnknown:
    case Rule::kClassHidden:
    case Rule::kPreloadNeverHolds:
      return Judged::kProcess;
    case Rule::kDuplicateService:
    case Rule::kPreloadNotActedOn:
    case Rule::kFileMissing:
    case Rule::kNoImplementation:
    case Rule::kPathTooLong:
    case Rule::kOutsideLoadpoint:
    case Rule::kBaseMissing:
    case Rule::kNoManifests:
      return Judged::kLoadPoint;
    default:
      return Judged::kFileAlone;
  }
}

}  // namespace

bool BeginsStatement(std::string_view line) {
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == line.npos) return false;
  const char character = line[first];
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool CanBeAllowed(Rule rule) {
  return Describe(rule).severity != Severity::kError;
}

Allowances AllowancesOf(const Manifest& manifest) {
  Allowances allowances;
  allowances.source = &manifest.source;
  const Document& document = manifest.document;
  for (NodeId node = 0; node < document.nodes.size(); ++node) {
    if (document[node].firstChild != kNoNode) ReadChildren(document, node, allowances);
  }
  std::sort(allowances.rules.begin(), allowances.rules.end(),
            [](const Allowance& one, const Allowance& other) {
              return one.name.begin < other.name.begin;
            });
  return allowances;
}

Allowances AllowancesOf(const LayoutFileText& layout) {
  Allowances allowances;
  const Source& source = layout.source;
  allowances.source = &source;
  std::size_t open = 0;    // from here on nothing is covered yet
  std::size_t inside = 0;  // from here on the statement being read is covered
  for (std::size_t line = 1; line <= source.LineCount(); ++line) {
    const Span span = source.Line(line);
    const std::string_view text = source.Text(span);
    if (BeginsStatement(text)) {
      inside = open;
      open = allowances.rules.size();
      for (std::size_t i = inside; i < open; ++i)
        allowances.rules[i].covered = span;
    } else if (const std::size_t mark = text.find_first_not_of(kBlanks);
               mark != text.npos && text[mark] == '#') {
      CommentReader(allowances, {span.begin + mark + 1, span.end})
          .Read(WithItsLine(source.Text(), span), {span.end, span.end});
    }
    // A statement goes on until the next one begins.
    for (std::size_t i = inside; i < open; ++i)
      allowances.rules[i].covered.end = span.end + 1;
  }
  return allowances;
}

std::vector<const Allowance*> Cover(Allowances& allowances, const std::vector<Finding>& findings) {
  std::vector<const Allowance*> covering(findings.size(), nullptr);
  // Those of each rule that have begun and not ended: covered places lie inside or beside each other.
  std::array<std::vector<Allowance*>, kRuleCount> begun;
  std::vector<Allowance*> sorted;
  for (Allowance& allowance : allowances.rules)
    sorted.push_back(&allowance);
  std::stable_sort(sorted.begin(), sorted.end(), [](const Allowance* one, const Allowance* other) {
    return one->covered.begin < other->covered.begin;
  });
  auto next = sorted.begin();
  for (std::size_t i = 0; i < findings.size(); ++i) {
    const std::size_t place = findings[i].place.span.begin;
    for (; next != sorted.end() && (*next)->covered.begin <= place; ++next)
      begun[static_cast<std::size_t>((*next)->rule)].push_back(*next);
    std::vector<Allowance*>& candidates = begun[static_cast<std::size_t>(findings[i].rule)];
    while (!candidates.empty() && candidates.back()->covered.end <= place)
      candidates.pop_back();
    if (candidates.empty()) continue;
    candidates.back()->isUsed = true;
    covering[i] = candidates.back();
  }
  return covering;
}

std::vector<Finding> UnusedAllowances(const Allowances& allowances, Judged judged) {
  std::vector<Finding> findings;
  // Findings about allowances come after this.
  const auto isUnused = [judged](const Allowance& allowance) {
    return !allowance.isUsed && judged >= Needed(allowance.rule) &&
           allowance.rule != Rule::kAllowUnknown && allowance.rule != Rule::kAllowUnused;
  };
  std::vector<std::size_t> unused(allowances.comments.size(), 0);
  for (const Allowance& allowance : allowances.rules) {
    if (isUnused(allowance)) ++unused[allowance.comment];
  }
  for (const Allowance& allowance : allowances.rules) {
    if (!isUnused(allowance)) continue;
    const AllowComment& comment = allowances.comments[allowance.comment];
    const std::string_view name = allowances.source->Text(allowance.name);
    Finding finding = Found(Rule::kAllowUnused, kBtkOk, {allowances.source, allowance.name},
                            fmt::format("\"{}\" has nothing to allow here", name));
    Suggestion removal = unused[allowance.comment] == comment.named
                             ? Remove(comment.span, "the comment")
                             : Remove(WithItsSeparator(*allowances.source, allowance.name),
                                      fmt::format("\"{}\"", name));
    // What lies around the file may be different on another machine.
    const bool isSafe = Needed(allowance.rule) == Judged::kFileAlone;
    finding.suggestions.push_back(isSafe ? Safe(std::move(removal)) : std::move(removal));
    findings.push_back(std::move(finding));
  }
  return findings;
}

}  // namespace tarnmf::check
