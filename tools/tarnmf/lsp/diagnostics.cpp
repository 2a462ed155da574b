#include "tools/tarnmf/lsp/diagnostics.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "check/rules.h"

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

std::map<std::string, DiagnosticsPublisher::Shown> DiagnosticsPublisher::Current(
    const Workspace& workspace) const {
  std::map<std::string, Json> byPath;
  for (const auto& process : workspace.Processes()) {
    const Places places(process->report);
    std::map<std::string, Json> found;
    for (const Finding& each : process->verdict.findings) {
      const Finding finding = AtShownPlaces(each, places);
      if (finding.place.source == nullptr) continue;
      Json& diagnostics =
          found.try_emplace(finding.place.source->Path(), Json::array()).first->second;
      diagnostics.push_back(Diagnostic(finding, editor_));
    }
    byPath.merge(std::move(found));  // a file of two processes is shown as in the first one
  }
  std::map<std::string, Shown> current;
  for (const auto& [uri, document] : documents_.All())
    current[uri].version = document.version;
  for (auto& [path, diagnostics] : byPath) {
    const std::vector<const OpenDocument*> open = documents_.OfPath(path);
    for (const OpenDocument* document : open)
      current[document->uri].diagnostics = diagnostics;
    if (open.empty()) current[editor_.UriOf(path)].diagnostics = std::move(diagnostics);
  }
  return current;
}

void DiagnosticsPublisher::Publish(const Workspace& workspace, const Send& send) {
  std::map<std::string, Shown> current = Current(workspace);
  for (const auto& [uri, before] : shown_) {
    if (!current.contains(uri) && !before.diagnostics.empty())
      send({{"uri", uri}, {"diagnostics", Json::array()}});
  }
  for (const auto& [uri, now] : current) {
    const auto before = shown_.find(uri);
    if (before != shown_.end() && before->second == now) continue;
    Json params = {{"uri", uri}, {"diagnostics", now.diagnostics}};
    if (now.version) params["version"] = *now.version;
    send(std::move(params));
  }
  shown_ = std::move(current);
}

}  // namespace tool::lsp
