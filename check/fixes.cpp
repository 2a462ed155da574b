// SPDX-License-Identifier: Apache-2.0
#include "check/fixes.h"

#include <algorithm>
#include <cassert>
#include <map>
#include <set>
#include <utility>

#include "check/edited_files.h"
#include "check/verdict.h"

namespace tarnmf::check {
namespace {

constexpr int kMostPasses = 4;

bool HasCrLf(const std::string& text) {
  const std::size_t lineFeed = text.find('\n');
  return lineFeed != text.npos && lineFeed > 0 && text[lineFeed - 1] == '\r';
}

std::string WithCrLf(const std::string& text) {
  std::string changed;
  for (const char character : text) {
    if (character == '\n' && !changed.ends_with('\r')) changed += '\r';
    changed += character;
  }
  return changed;
}

// Places of one file that are edited already.
class EditedPlaces {
 public:
  // False, and nothing taken: something there is edited by another suggestion.
  bool Take(const std::vector<Edit>& edits) {
    for (const Edit& edit : edits) {
      if (Touches(edit.span)) return false;
    }
    for (const Edit& edit : edits)
      taken_.emplace(edit.span.begin, edit.span.end);
    return true;
  }

 private:
  // Two texts put in at one place have no order, so that they touch.
  bool Touches(Span span) const {
    const auto next = taken_.lower_bound(span.begin);
    if (next != taken_.end() && (next->first == span.begin || next->first < span.end)) return true;
    return next != taken_.begin() && std::prev(next)->second > span.begin;
  }

  std::map<std::size_t, std::size_t> taken_;
};

// The edits of one file in one pass.
struct Change {
  const Source* source = nullptr;
  EditedPlaces places;
  std::vector<Edit> edits;
  std::size_t fixes = 0;
};
using Changes = std::map<std::string, Change>;

using ErrorCounts = std::map<std::string, std::size_t>;

ErrorCounts ErrorsByFile(const Verdict& verdict) {
  ErrorCounts counts;
  for (const Finding& finding : verdict.findings) {
    if (finding.severity == Severity::kError) ++counts[finding.place.source->Path()];
  }
  return counts;
}

std::size_t CountOf(const ErrorCounts& counts, const std::string& path) {
  const auto found = counts.find(path);
  return found != counts.end() ? found->second : 0;
}

class Fixer {
 public:
  Fixer(const Request& request, Files& files, SettingsFinder& settings, const Levels& levels)
      : request_(request), files_(files), settings_(settings), levels_(levels) {}

  FixOutcome Run() {
    Look();
    for (int pass = 0; pass < kMostPasses; ++pass) {
      Changes changes = SafeChanges();
      if (changes.empty()) break;
      Apply(std::move(changes));
    }
    for (auto& [path, fixed] : fixed_) {
      fixed.path = path;
      outcome_.files.push_back(std::move(fixed));
    }
    return std::move(outcome_);
  }

 private:
  void Look() {
    report_ = Check(request_, files_);
    verdict_ = Judge(report_, settings_, levels_);
  }

  Changes SafeChanges() const {
    Changes changes;
    for (const Finding& finding : verdict_.findings) {
      const Source* const source = finding.place.source;
      const auto safe = std::find_if(finding.suggestions.begin(), finding.suggestions.end(),
                                     [](const Suggestion& suggestion) { return suggestion.safe; });
      if (safe == finding.suggestions.end() || left_.contains(source->Path())) continue;
      Change& change = changes[source->Path()];
      if (change.source == nullptr) change.source = source;
      if (!change.places.Take(safe->edits)) continue;
      change.edits.insert(change.edits.end(), safe->edits.begin(), safe->edits.end());
      ++change.fixes;
    }
    return changes;
  }

  void Apply(Changes changes) {
    const ErrorCounts before = ErrorsByFile(verdict_);
    for (auto& [path, change] : changes) {
      FixedFile& fixed = fixed_[path];
      if (fixed.fixes == 0) fixed.before = change.source->Bytes();
      fixed.fixes += change.fixes;
      fixed.after = Edited(*change.source, std::move(change.edits));
      files_.Edit(path, fixed.after);
    }
    do {
      Look();
    } while (PutBackGrown(changes, before));
  }

  // Puts back the files that have more errors by their own changes. Those of other files may have
  // brought the errors to light as well: then there are as many without the own ones. Returns whether
  // files were judged, so that the others have to be looked at again.
  bool PutBackGrown(Changes& changes, const ErrorCounts& before) {
    ErrorCounts grown;
    for (const auto& [path, count] : ErrorsByFile(verdict_)) {
      if (count <= CountOf(before, path) || changes.erase(path) == 0) continue;
      grown.emplace(path, count);
      files_.Drop(path);
    }
    if (grown.empty()) return false;
    Look();
    const ErrorCounts without = ErrorsByFile(verdict_);
    for (const auto& [path, count] : grown) {
      if (CountOf(without, path) >= count) {
        files_.Edit(path, fixed_[path].after);
      } else {
        fixed_.erase(path);
        left_.insert(path);
        outcome_.putBack.push_back(path);
      }
    }
    return true;
  }

  const Request& request_;
  EditedFiles files_;
  SettingsFinder& settings_;
  const Levels& levels_;
  std::map<std::string, FixedFile> fixed_;
  std::set<std::string> left_;  // put back, and not tried again
  Report report_;               // of the files as they are now
  Verdict verdict_;
  FixOutcome outcome_;
};

}  // namespace

std::string Edited(const Source& source, std::vector<Edit> edits) {
  assert(source.IsUtf8());
  // Those at one place keep their order; what is put in there comes before what is replaced.
  std::stable_sort(edits.begin(), edits.end(), [](const Edit& one, const Edit& other) {
    return std::pair(one.span.begin, one.span.end) < std::pair(other.span.begin, other.span.end);
  });
  const std::string& text = source.Text();
  const bool crLf = HasCrLf(text);
  std::string edited = source.Bytes().substr(0, source.MarkSize());
  std::size_t copied = 0;
  for (const Edit& edit : edits) {
    edited.append(text, copied, edit.span.begin - copied);
    edited += crLf ? WithCrLf(edit.text) : edit.text;
    copied = edit.span.end;
  }
  return edited.append(text, copied, text.npos);
}

FixOutcome Fix(const Request& request, Files& files, SettingsFinder& settings,
               const Levels& levels) {
  return Fixer(request, files, settings, levels).Run();
}

}  // namespace tarnmf::check
