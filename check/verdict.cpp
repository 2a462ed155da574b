// SPDX-License-Identifier: Apache-2.0
#include "check/verdict.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "check/allowances.h"
#include "check/paths.h"

namespace tarnmf::check {
namespace {

// The findings of one file, or about one directory. A file may have been read twice, for two load
// points.
struct Part {
  std::string directory;
  std::vector<Finding> findings;
  std::vector<AllowedFinding> allowed;
  bool isDone = false;  // its allowances have been looked at
};

class Judgement {
 public:
  Judgement(SettingsFinder& settings, const Levels& levels)
      : settings_(settings), levels_(levels) {}

  Verdict Of(Report& report) {
    // Sources in the order of reading, so that the findings about a file's allowances stand with it.
    for (const auto& loadpoint : report.loadpoints) {
      Open(loadpoint->directory, loadpoint->directory.Path());
      if (loadpoint->layout) Open(loadpoint->layout->source);
      for (const auto& source : loadpoint->unreadable)
        Open(*source);
      for (const auto& manifest : loadpoint->manifests)
        Open(manifest->source);
    }
    isProcessKnown_ = IsProcessKnown(report);
    verdict_.findings.reserve(report.findings.size());
    for (Finding& finding : std::exchange(report.findings, {}))
      Open(*finding.place.source).findings.push_back(std::move(finding));
    for (const auto& loadpoint : report.loadpoints)
      Allow(*loadpoint);
    for (Part& part : parts_)
      Tell(part);
    return std::move(verdict_);
  }

 private:
  Part& Open(const Source& source) { return Open(source, DirectoryOf(source.Path())); }

  Part& Open(const Source& source, std::string directory) {
    const auto [entry, isNew] = numbers_.emplace(source.Path(), parts_.size());
    if (isNew) parts_.push_back({std::move(directory), {}, {}});
    return parts_[entry->second];
  }

  static bool IsProcessKnown(const Report& report) {
    bool hasProcess = false;
    for (const auto& loadpoint : report.loadpoints) {
      if (!loadpoint->isComplete) return false;
      hasProcess = hasProcess || loadpoint->role == LoadPoint::Role::kProcess;
    }
    return hasProcess;
  }

  // Records that cannot be made out may be what others lack.
  Judged HowFar(const LoadPoint& loadpoint) const {
    const bool isPart = loadpoint.role != LoadPoint::Role::kUnknown && !loadpoint.isDuplicate;
    if (!isPart || !loadpoint.isComplete) return Judged::kFileAlone;
    if (loadpoint.layout && LacksBase(*loadpoint.layout)) return Judged::kFileAlone;
    return isProcessKnown_ ? Judged::kProcess : Judged::kLoadPoint;
  }

  // Without its base folder, nothing is known about an installation's files.
  static bool LacksBase(const LayoutFileText& layout) {
    return std::any_of(layout.findings.begin(), layout.findings.end(),
                       [](const Finding& finding) { return finding.rule == Rule::kBaseMissing; });
  }

  void Allow(const LoadPoint& loadpoint) {
    const Judged judged = HowFar(loadpoint);
    const auto isAsked = [&](const Source& source) {
      return loadpoint.asked.empty() || loadpoint.asked.contains(source.Path());
    };
    if (loadpoint.layout && isAsked(loadpoint.layout->source)) {
      const LayoutFileText& layout = *loadpoint.layout;
      Allow(AllowancesOf(layout), layout.isRefused ? Judged::kNotToItsEnd : judged,
            layout.source.IsUtf8());
    }
    for (const auto& manifest : loadpoint.manifests) {
      if (!isAsked(manifest->source)) continue;
      const bool isEditable = manifest->source.IsUtf8() && manifest->source.Encoding() == "UTF-8" &&
                              manifest->isWellFormed && manifest->document.doctype.Size() == 0;
      Allow(AllowancesOf(*manifest), manifest->isWellFormed ? judged : Judged::kNotToItsEnd,
            isEditable);
    }
  }

  void Allow(Allowances allowances, Judged judged, bool isEditable) {
    Part& part = Open(*allowances.source);
    if (std::exchange(part.isDone, true)) return;
    Separate(allowances, Different(std::exchange(part.findings, {})), part);
    std::vector<Finding> about = UnusedAllowances(allowances, judged);
    std::move(allowances.misspelt.begin(), allowances.misspelt.end(), std::back_inserter(about));
    Separate(allowances, std::move(about), part);
    SortByPlace(part.findings);
    if (!isEditable) MakeUnsafe(part.findings);
  }

  static std::vector<Finding> Different(std::vector<Finding> findings) {
    std::set<std::tuple<Rule, std::size_t, std::size_t, std::string_view>> seen;
    std::vector<Finding> different;
    different.reserve(findings.size());
    for (Finding& finding : findings) {
      const Span place = finding.place.span;
      if (seen.contains({finding.rule, place.begin, place.end, finding.message})) continue;
      const Finding& kept = different.emplace_back(std::move(finding));
      seen.insert({kept.rule, place.begin, place.end, kept.message});
    }
    return different;
  }

  static void MakeUnsafe(std::vector<Finding>& findings) {
    for (Finding& finding : findings) {
      for (Suggestion& suggestion : finding.suggestions)
        suggestion.safe = false;
    }
  }

  static void Separate(Allowances& allowances, std::vector<Finding> findings, Part& part) {
    SortByPlace(findings);
    const std::vector<const Allowance*> covering = Cover(allowances, findings);
    for (std::size_t i = 0; i < findings.size(); ++i) {
      if (covering[i] == nullptr) {
        part.findings.push_back(std::move(findings[i]));
      } else {
        const std::string_view reason = allowances.comments[covering[i]->comment].reason;
        part.allowed.push_back({std::move(findings[i]), std::string(reason)});
      }
    }
  }

  static void SortByPlace(std::vector<Finding>& findings) {
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& one, const Finding& other) {
                       return one.place.span.begin < other.place.span.begin;
                     });
  }

  // False: nobody wants to be told.
  bool Level(Finding& finding, const Settings* settings) const {
    if (settings != nullptr) {
      finding.severity = settings->levels.Of(finding.rule).value_or(finding.severity);
    }
    finding.severity = levels_.Of(finding.rule).value_or(finding.severity);
    return finding.severity != Severity::kOff;
  }

  void Tell(Part& part) {
    if (part.findings.empty() && part.allowed.empty()) return;
    const Settings* const settings = settings_.For(part.directory);
    for (Finding& finding : part.findings) {
      if (Level(finding, settings)) verdict_.findings.push_back(std::move(finding));
    }
    for (AllowedFinding& allowed : part.allowed) {
      if (Level(allowed.finding, settings)) verdict_.allowed.push_back(std::move(allowed));
    }
  }

  SettingsFinder& settings_;
  const Levels& levels_;
  std::vector<Part> parts_;                               // in the order in which they are told
  std::unordered_map<std::string, std::size_t> numbers_;  // by path
  bool isProcessKnown_ = false;
  Verdict verdict_;
};

}  // namespace

std::size_t Verdict::Count(Severity severity) const {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(),
                    [severity](const Finding& finding) { return finding.severity == severity; }));
}

Verdict Judge(Report& report, SettingsFinder& settings, const Levels& levels) {
  return Judgement(settings, levels).Of(report);
}

}  // namespace tarnmf::check
