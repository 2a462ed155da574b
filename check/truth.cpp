// SPDX-License-Identifier: Apache-2.0
#include "check/truth.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <vector>

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/ldp_loader.h"
#include "tarnmf/publisher.h"

#include "check/wording.h"
#include "platform/filesystem.h"
#include "support/owned.h"

namespace tarnmf::check {
namespace {

// Nothing: an exception of the XML library.
using Outcome = std::optional<BtkErrorT>;

BtkErrorT AddToPublisher(const MfLdpDataT& data) {
  DisposePtr<liMfPublisher> publisher;
  if (BtkErrorT e = liMfPublisher::CreateNew(Out(publisher), kIntfAgentView)) return e;
  return publisher->Add(data.classes.items, data.classes.count, data.modules.items,
                        data.modules.count, data.runnables.items, data.runnables.count);
}

// Loads the files as those of one load point and hands their records to a publisher.
Outcome AskLibrary(const LoadPoint& loadpoint, const std::vector<const Source*>& sources) {
  const btkFSPath path(loadpoint.path.c_str());
  btkFSList files(0);
  for (const Source* source : sources)
    files.Append(btkFSEntry(source->Path().c_str()));
  MfLdpDataT data;
  try {
    const DisposePtr<liLdpMfLoader> loader(liLdpMfLoader::CreateNew(nullptr));
    if (!loader) return kBtkNoMemory;
    if (BtkErrorT e = loader->Load(&data, path.WideText(), files)) return e;
    return AddToPublisher(data);
  } catch (...) {
    return std::nullopt;
  }
}

std::vector<const Source*> SourcesOf(const LoadPoint& loadpoint) {
  std::vector<const Source*> sources;
  for (const auto& manifest : loadpoint.manifests)
    sources.push_back(&manifest->source);
  for (const auto& source : loadpoint.unreadable)
    sources.push_back(source.get());
  return sources;
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

// Of a text in an encoding that nobody here knows the library alone can say whether it is refused.
void JudgeUndecoded(const LoadPoint& loadpoint, std::vector<Finding>& found) {
  for (const auto& manifest : loadpoint.manifests) {
    if (manifest->source.IsDecoded()) continue;
    const Outcome outcome = AskLibrary(loadpoint, {&manifest->source});
    if (outcome == kBtkOk) continue;
    // Told where the encoding is, with what was probably meant by it.
    const Finding& encoding = manifest->findings.front();
    found.push_back(Found(Rule::kNotWellFormed, outcome.value_or(kBtkOk), encoding.place,
                          fmt::format("the library cannot read this file, whose encoding {} is not "
                                      "known",
                                      Quoted(manifest->source.Encoding()))));
    found.back().suggestions = encoding.suggestions;
  }
}

}  // namespace

void CompareWithLibrary(const LoadPoint& loadpoint, std::vector<Finding>& findings) {
  // With what a single file would be read is not known.
  if (loadpoint.role == LoadPoint::Role::kUnknown && !loadpoint.isComplete) return;
  const bool isSafe = std::all_of(loadpoint.manifests.begin(), loadpoint.manifests.end(),
                                  [](const auto& manifest) { return IsSafeToLoad(*manifest); });
  if (!isSafe) return;
  JudgeUndecoded(loadpoint, findings);
  const Outcome outcome = AskLibrary(loadpoint, SourcesOf(loadpoint));
  if (outcome == kBtkNoMemory) return;
  bool hasCode = false;
  bool isExpected = false;
  std::optional<Place> refused;  // the place of something that the library has to refuse
  for (const Finding& finding : findings) {
    if (!IsOfManifests(loadpoint, finding)) continue;
    if (finding.code == kBtkOk) {
      isExpected = true;
    } else {
      hasCode |= outcome == finding.code;
      if (!refused) refused = finding.place;
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
  } else if (*outcome == kBtkOk && refused && !isExpected) {
    findings.push_back(Found(Rule::kLibraryDisagrees, kBtkOk, place,
                             "the library answers 0 and check found an error: please report"));
    findings.back().related.push_back({*refused, "the error that check found"});
  }
}

}  // namespace tarnmf::check
