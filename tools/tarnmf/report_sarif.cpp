// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/report_sarif.h"

#include <cstdint>
#include <filesystem>
#include <fmt/format.h>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "tools/tarnmf/file_uri.h"

namespace tool {
namespace {

using namespace tarnmf::check;

constexpr std::string_view kLevels[] = {"none", "note", "warning", "error"};  // by Severity

std::string_view LevelOf(Severity severity) {
  return kLevels[static_cast<std::size_t>(severity)];
}

Json RegionOf(const Source& source, Span span) {
  const Position begin = source.At(span.begin);
  const Position end = source.At(span.end);
  return {{"startLine", begin.line},
          {"startColumn", begin.column},
          {"endLine", end.line},
          {"endColumn", end.column}};
}

Json LocationOf(const Place& place) {
  return {{"physicalLocation",
           {{"artifactLocation", {{"uri", UriOfPath(place.source->Path())}}},
            {"region", RegionOf(*place.source, place.span)}}}};
}

Json ToJson(const RuleT& rule) {
  Json json = {{"id", rule.name},
               {"shortDescription", {{"text", rule.summary}}},
               {"defaultConfiguration", {{"level", LevelOf(rule.severity)}}}};
  if (rule.advice[0] != '\0') json["help"] = {{"text", rule.advice}};
  return json;
}

Json ToJson(const Suggestion& suggestion, const Source& source) {
  Json replacements = Json::array();
  for (const Edit& edit : suggestion.edits) {
    Json& replacement = replacements.emplace_back();
    replacement["deletedRegion"] = RegionOf(source, edit.span);
    if (!edit.text.empty()) replacement["insertedContent"] = {{"text", edit.text}};
  }
  Json change = {{"artifactLocation", {{"uri", UriOfPath(source.Path())}}},
                 {"replacements", std::move(replacements)}};
  return {{"description", {{"text", suggestion.title}}},
          {"artifactChanges", Json::array({std::move(change)})},
          {"properties", {{"safe", suggestion.safe}}}};
}

// Makes fingerprints that stay when lines are put in before a finding: of the rule and what stands
// around the place in its line, with a number for those that have both in common.
class Fingerprints {
 public:
  std::string Of(const Finding& finding) {
    const Source& source = *finding.place.source;
    std::uint64_t hash = Mixed(kSeed, source.Path());
    hash = Mixed(hash, Describe(finding.rule).name);
    hash = Mixed(hash, source.Text(Around(source, finding.place.span.begin)));
    return fmt::format("{:016x}:{}", hash, ++counts_[hash]);
  }

 private:
  static constexpr std::uint64_t kSeed = 0xcbf29ce484222325U;  // FNV-1a

  // Of a line without an end, a part is enough.
  static Span Around(const Source& source, std::size_t place) {
    constexpr std::size_t kMostBytes = 100;  // on either side
    const Span line = source.Line(source.At(place).line);
    return {place - std::min(place - line.begin, kMostBytes),
            std::min<std::size_t>(line.end, place + kMostBytes)};
  }

  static std::uint64_t Mixed(std::uint64_t hash, std::string_view text) {
    constexpr std::uint64_t kPrime = 0x100000001b3U;
    for (const char character : text)
      hash = (hash ^ static_cast<unsigned char>(character)) * kPrime;
    return hash * kPrime;  // so that two texts are not one
  }

  std::map<std::uint64_t, int> counts_;
};

Json ToJson(const Finding& finding, Fingerprints& fingerprints) {
  Json json = {{"ruleId", Describe(finding.rule).name},
               {"ruleIndex", static_cast<int>(finding.rule)},
               {"level", LevelOf(finding.severity)},
               {"message", {{"text", finding.message}}},
               {"locations", Json::array({LocationOf(finding.place)})}};
  int id = 0;
  for (const Related& related : finding.related) {
    Json location = LocationOf(related.place);
    location["id"] = ++id;
    location["message"] = {{"text", related.message}};
    json["relatedLocations"].push_back(std::move(location));
  }
  for (const Suggestion& suggestion : finding.suggestions) {
    if (!suggestion.edits.empty())
      json["fixes"].push_back(ToJson(suggestion, *finding.place.source));
  }
  json["partialFingerprints"] = {{"tarnmf/v1", fingerprints.Of(finding)}};
  if (finding.code != kBtkOk) json["properties"] = {{"code", static_cast<int>(finding.code)}};
  json["suppressions"] = Json::array();
  return json;
}

Json ToJson(const AllowedFinding& allowed, Fingerprints& fingerprints) {
  Json json = ToJson(allowed.finding, fingerprints);
  Json suppression = {{"kind", "inSource"}};
  if (!allowed.reason.empty()) suppression["justification"] = allowed.reason;
  json["suppressions"].push_back(std::move(suppression));
  return json;
}

}  // namespace

Json SarifReport(const Verdict& verdict) {
  Json driver = {{"name", "tarnmf"}, {"version", TARNMF_VERSION}, {"rules", Json::array()}};
  for (const RuleT& rule : Catalogue())
    driver["rules"].push_back(ToJson(rule));
  Json results = Json::array();
  Fingerprints fingerprints;
  for (const Finding& finding : verdict.findings)
    results.push_back(ToJson(finding, fingerprints));
  for (const AllowedFinding& allowed : verdict.allowed)
    results.push_back(ToJson(allowed, fingerprints));
  Json run = {{"tool", {{"driver", std::move(driver)}}},
              {"columnKind", "unicodeCodePoints"},
              {"results", std::move(results)}};
  return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
          {"version", "2.1.0"},
          {"runs", Json::array({std::move(run)})}};
}

}  // namespace tool
