#include "check/verdict.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "check/allowances.h"

namespace tarnmf::check {
namespace {

// The findings of one source.
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

  Verdict Of(const Report& report) {
    // Sources in the order of reading, so that the findings about a file's allowances stand with it.
    for (const auto& loadpoint : report.loadpoints) {
      Open(loadpoint->directory, loadpoint->directory.Path());
      if (loadpoint->layout) Open(loadpoint->layout->source);
      for (const auto& manifest : loadpoint->manifests)
        Open(manifest->source);
    }
    for (const Finding& finding : report.findings)
      Open(*finding.place.source).findings.push_back(finding);
    for (const auto& loadpoint : report.loadpoints)
      Allow(*loadpoint);
    for (Part& part : parts_)
      Tell(part);
    return std::move(verdict_);
  }

 private:
  Part& Open(const Source& source) {
    return Open(source, std::filesystem::path(source.Path()).parent_path().string());
  }

  Part& Open(const Source& source, std::string directory) {
    const auto [entry, isNew] = numbers_.emplace(&source, parts_.size());
    if (isNew) parts_.push_back({std::move(directory), {}, {}});
    return parts_[entry->second];
  }

  // Without its base folder, nothing is known about an installation's files.
  static bool LacksBase(const LayoutFileText& layout) {
    return std::any_of(layout.findings.begin(), layout.findings.end(),
                       [](const Finding& finding) { return finding.rule == Rule::kBaseMissing; });
  }

  void Allow(const LoadPoint& loadpoint) {
    const bool isKnown = loadpoint.IsComplete() && loadpoint.role != LoadPoint::Role::kUnknown &&
                         !(loadpoint.layout && LacksBase(*loadpoint.layout));
    const Judged judged = isKnown ? Judged::kEverything : Judged::kFileAlone;
    const auto isAsked = [&](const Source& source) {
      return loadpoint.asked.empty() || loadpoint.asked.contains(source.Path());
    };
    if (loadpoint.layout && isAsked(loadpoint.layout->source)) {
      const LayoutFileText& layout = *loadpoint.layout;
      Allow(AllowancesOf(layout), layout.isRefused ? Judged::kNotToItsEnd : judged);
    }
    for (const auto& manifest : loadpoint.manifests) {
      if (!isAsked(manifest->source)) continue;
      Allow(AllowancesOf(*manifest), manifest->isWellFormed ? judged : Judged::kNotToItsEnd);
    }
  }

  void Allow(Allowances allowances, Judged judged) {
    Part& part = Open(*allowances.source);
    if (std::exchange(part.isDone, true)) return;
    Separate(allowances, std::exchange(part.findings, {}), part);
    std::vector<Finding> about = UnusedAllowances(allowances, judged);
    std::move(allowances.misspelt.begin(), allowances.misspelt.end(), std::back_inserter(about));
    Separate(allowances, std::move(about), part);
    SortByPlace(part.findings);
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
  std::vector<Part> parts_;  // in the order in which they are told
  std::unordered_map<const Source*, std::size_t> numbers_;
  Verdict verdict_;
};

}  // namespace

std::size_t Verdict::Count(Severity severity) const {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(),
                    [severity](const Finding& finding) { return finding.severity == severity; }));
}

Verdict Judge(const Report& report, SettingsFinder& settings, const Levels& levels) {
  return Judgement(settings, levels).Of(report);
}

}  // namespace tarnmf::check
