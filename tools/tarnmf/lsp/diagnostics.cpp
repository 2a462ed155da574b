// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/lsp/diagnostics.h"

#include <algorithm>
#include <deque>
#include <fmt/format.h>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "check/rules.h"
#include "tools/tarnmf/file_uri.h"

namespace tool::lsp {
namespace {

using namespace tarnmf::check;

int SeverityNumber(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return 1;
    case Severity::kWarning:
      return 2;
    case Severity::kInfo:
    case Severity::kOff:
      break;
  }
  return 3;
}

// An editor shows no directory: what is found about one stands at the beginning of its layout file or
// of its first manifest.
class Places {
 public:
  explicit Places(const Report& report) {
    for (const auto& loadpoint : report.loadpoints) {
      const Source* shown = nullptr;
      if (loadpoint->layout != nullptr) {
        shown = &loadpoint->layout->source;
      } else if (!loadpoint->manifests.empty()) {
        shown = &loadpoint->manifests.front()->source;
      }
      directories_.emplace(&loadpoint->directory, shown);
    }
  }

  bool IsDirectory(const Place& place) const { return directories_.contains(place.source); }
  // Without a source where there is nothing to show it at.
  Place Shown(const Place& place) const {
    const auto found = directories_.find(place.source);
    return found != directories_.end() ? Place{found->second, {}} : place;
  }

 private:
  std::map<const Source*, const Source*> directories_;
};

Finding AtShownPlaces(Finding finding, const Places& places) {
  finding.place = places.Shown(finding.place);
  for (Related& related : finding.related)
    related.place = places.Shown(related.place);
  std::erase_if(finding.related,
                [](const Related& related) { return related.place.source == nullptr; });
  return finding;
}

// The findings of a process by file.
class FoundByFile {
 public:
  explicit FoundByFile(const Process& process) {
    const Places places(process.report);
    for (const Finding& finding : process.verdict.findings) {
      const bool isMoved =
          places.IsDirectory(finding.place) ||
          std::any_of(finding.related.begin(), finding.related.end(),
                      [&](const Related& related) { return places.IsDirectory(related.place); });
      const Finding* shown = &finding;
      if (isMoved) shown = &moved_.emplace_back(AtShownPlaces(finding, places));
      if (shown->place.source != nullptr) files_[shown->place.source->Path()].push_back(shown);
    }
  }

  const std::map<std::string_view, std::vector<const Finding*>>& Files() const { return files_; }

 private:
  std::deque<Finding> moved_;
  std::map<std::string_view, std::vector<const Finding*>> files_;
};

void AppendPlace(const Place& place, std::string& text) {
  for (const std::size_t offset : {place.span.begin, place.span.end}) {
    const tarnmf::check::Position at = place.source->At(offset);
    fmt::format_to(std::back_inserter(text), "{} {} ", at.line, at.column);
  }
}

// Of everything that the editor is told. The texts that the places lie in may have changed, too.
std::size_t Fingerprint(const std::vector<const Finding*>& findings) {
  std::string text;
  for (const Finding* finding : findings) {
    AppendPlace(finding->place, text);
    fmt::format_to(std::back_inserter(text), "{} {} {} {}\n", static_cast<int>(finding->rule),
                   static_cast<int>(finding->severity), static_cast<int>(finding->code),
                   finding->message);
    for (const Related& related : finding->related) {
      AppendPlace(related.place, text);
      fmt::format_to(std::back_inserter(text), "{} {}\n", related.place.source->Path(),
                     related.message);
    }
  }
  return text.empty() ? 0 : std::max<std::size_t>(std::hash<std::string>()(text), 1);
}

}  // namespace

Json Diagnostic(const Finding& finding, const Editor& editor) {
  Json diagnostic = {{"range", editor.RangeOf(*finding.place.source, finding.place.span)},
                     {"severity", SeverityNumber(finding.severity)},
                     {"code", Describe(finding.rule).name},
                     {"source", "tarnmf"},
                     {"message", finding.message}};
  if (finding.code != kBtkOk) diagnostic["data"] = {{"code", static_cast<int>(finding.code)}};
  if (!editor.abilities.relatedInformation || finding.related.empty()) return diagnostic;
  Json& related = diagnostic["relatedInformation"] = Json::array();
  for (const Related& each : finding.related)
    related.push_back({{"location", editor.LocationOf(*each.place.source, each.place.span)},
                       {"message", each.message}});
  return diagnostic;
}

void DiagnosticsPublisher::Publish(const Workspace& workspace, const Send& send) {
  std::deque<FoundByFile> processes;
  std::map<std::string, const std::vector<const Finding*>*> found;  // by URI
  std::set<std::string_view> told;  // a file of two processes is shown as in the first one
  for (const auto& process : workspace.Processes()) {
    processes.emplace_back(*process);
    for (const auto& [path, findings] : processes.back().Files()) {
      if (!told.insert(path).second) continue;
      const std::vector<const OpenDocument*> open = documents_.OfPath(path);
      for (const OpenDocument* document : open)
        found.emplace(document->uri, &findings);
      if (open.empty()) found.emplace(UriOfPath(path), &findings);
    }
  }
  std::map<std::string, Shown> current;
  for (const auto& [uri, document] : documents_.All())
    current[uri].version = document.version;
  for (const auto& [uri, findings] : found)
    current[uri].fingerprint = Fingerprint(*findings);

  const auto tell = [&](const std::string& uri, std::optional<std::int64_t> version) {
    Json params = {{"uri", uri}, {"diagnostics", Json::array()}};
    if (const auto findings = found.find(uri); findings != found.end()) {
      for (const Finding* finding : *findings->second)
        params["diagnostics"].push_back(Diagnostic(*finding, editor_));
    }
    if (version) params["version"] = *version;
    send(std::move(params));
  };
  for (const auto& [uri, before] : shown_) {
    if (before.fingerprint != 0 && !current.contains(uri)) tell(uri, std::nullopt);
  }
  for (const auto& [uri, now] : current) {
    const auto before = shown_.find(uri);
    if (before == shown_.end() || before->second != now) tell(uri, now.version);
  }
  shown_ = std::move(current);
}

}  // namespace tool::lsp
