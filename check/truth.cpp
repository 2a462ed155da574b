#include "check/truth.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/publisher.h"

#include "platform/filesystem.h"
#include "support/owned.h"

namespace tarnmf::check {
namespace {

// Nothing: an exception of the XML library.
using Outcome = std::optional<BtkErrorT>;

btkFSList FilesOf(const LoadPoint& loadpoint) {
  btkFSList files(0);
  for (const auto& manifest : loadpoint.manifests)
    files.Append(btkFSEntry(manifest->source.Path().c_str()));
  for (const auto& source : loadpoint.unreadable)
    files.Append(btkFSEntry(source->Path().c_str()));
  return files;
}

Outcome AskLibrary(const LoadPoint& loadpoint) {
  const btkFSPath path(loadpoint.path.c_str());
  MfLdpDataT data;
  try {
    const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    if (!loader) return kBtkNoMemory;
    if (BtkErrorT e = loader->Load(&data, path.WideText(), FilesOf(loadpoint))) return e;
    DisposePtr<liMfPublisher> publisher;
    if (BtkErrorT e = liMfPublisher::CreateNew(Out(publisher), kIntfAgentView)) return e;
    return publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                          data.modules.count, data.runnables.items, data.runnables.count);
  } catch (...) {
    return std::nullopt;
  }
}

// Whether the library would read the same, and would be done with it soon.
bool IsSafeToLoad(const Manifest& manifest) {
  const auto grows = [](const Finding& finding) { return finding.rule == Rule::kEntityExpansion; };
  return !manifest.isExternal &&
         std::none_of(manifest.findings.begin(), manifest.findings.end(), grows);
}

// An error about what the manifests say, which the library sees when it loads them.
bool IsOfManifests(const LoadPoint& loadpoint, const Finding& finding) {
  return finding.severity == Severity::kError && finding.place.source != &loadpoint.directory &&
         (loadpoint.layout == nullptr || finding.place.source != &loadpoint.layout->source);
}

}  // namespace

void CompareWithLibrary(const LoadPoint& loadpoint, const std::vector<Finding>& found,
                        std::vector<Finding>& findings) {
  // With what a single file would be read is not known.
  if (loadpoint.role == LoadPoint::Role::kUnknown && !loadpoint.isComplete) return;
  const bool isSafe = std::all_of(loadpoint.manifests.begin(), loadpoint.manifests.end(),
                                  [](const auto& manifest) { return IsSafeToLoad(*manifest); });
  if (!isSafe) return;
  const Outcome outcome = AskLibrary(loadpoint);
  if (outcome == kBtkNoMemory) return;
  bool hasCode = false;
  bool isExpected = false;
  const Finding* refused = nullptr;  // one that the library has to refuse
  for (const Finding& finding : found) {
    if (!IsOfManifests(loadpoint, finding)) continue;
    if (finding.code == kBtkOk) {
      isExpected = true;
    } else {
      hasCode |= outcome == finding.code;
      if (refused == nullptr) refused = &finding;
    }
  }
  const Place place{&loadpoint.directory, {}};
  if (!outcome) {
    if (isExpected) return;
    findings.push_back(Found(Rule::kLibraryDisagrees, kBtkOk, place,
                             "the library cannot process a manifest and check found nothing: "
                             "please report"));
  } else if (*outcome != kBtkOk && !hasCode && !isExpected) {
    findings.push_back(Found(Rule::kLibraryDisagrees, *outcome, place,
                             fmt::format("the library answers {} and check found nothing: please "
                                         "report",
                                         static_cast<int>(*outcome))));
  } else if (*outcome == kBtkOk && refused != nullptr) {
    findings.push_back(Found(Rule::kLibraryDisagrees, kBtkOk, place,
                             "the library answers 0 and check found an error: please report"));
    findings.back().related.push_back({refused->place, "the error that check found"});
  }
}

}  // namespace tarnmf::check
