// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/report_json.h"

#include <string>
#include <utility>

#include "check/settings.h"

namespace tool {
namespace {

using namespace tarnmf::check;

void AddRegion(Json& json, const Source& source, Span span) {
  const Position begin = source.At(span.begin);
  const Position end = source.At(span.end);
  json["line"] = begin.line;
  json["column"] = begin.column;
  json["endLine"] = end.line;
  json["endColumn"] = end.column;
}

Json ToJson(const Suggestion& suggestion, const Source& source) {
  Json json = {{"title", suggestion.title}, {"safe", suggestion.safe}, {"edits", Json::array()}};
  for (const Edit& edit : suggestion.edits) {
    Json& entry = json["edits"].emplace_back();
    AddRegion(entry, source, edit.span);
    entry["newText"] = edit.text;
  }
  return json;
}

Json ToJson(const Related& related) {
  const Position at = related.place.source->At(related.place.span.begin);
  return {{"file", related.place.source->Path()},
          {"line", at.line},
          {"column", at.column},
          {"message", related.message}};
}

Json ToJson(const Finding& finding) {
  const Source& source = *finding.place.source;
  Json json = {{"file", source.Path()}};
  AddRegion(json, source, finding.place.span);
  json["severity"] = LevelName(finding.severity);
  json["code"] = finding.code == kBtkOk ? Json() : Json(static_cast<int>(finding.code));
  json["rule"] = Describe(finding.rule).name;
  json["message"] = finding.message;
  json["suggestions"] = Json::array();
  for (const Suggestion& suggestion : finding.suggestions)
    json["suggestions"].push_back(ToJson(suggestion, source));
  json["related"] = Json::array();
  for (const Related& related : finding.related)
    json["related"].push_back(ToJson(related));
  return json;
}

}  // namespace

Json JsonReport(const Verdict& verdict) {
  Json json = Json::array();
  for (const Finding& finding : verdict.findings)
    json.push_back(ToJson(finding));
  return json;
}

}  // namespace tool
