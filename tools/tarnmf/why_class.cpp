// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/why_class.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>
#include <vector>

#include "check/answers.h"
#include "check/wording.h"
#include "tools/tarnmf/name_hint.h"
#include "tools/tarnmf/record_json.h"
#include "tools/tarnmf/show_text.h"
#include "tools/tarnmf/tell.h"
#include "tools/tarnmf/text.h"

namespace tool {
namespace {

using namespace tarnmf::check;

Place PlaceOf(const NamedClass& named) {
  return named.record->At(named.record->ElementName());
}

std::string ScopeText(const UniIdT& scope) {
  return btkUniIdIsNull(scope) ? "without a scope" : "of scope " + IdText(scope);
}

// Why a class is not filed: the service that hosts it.
std::string NotFiledText(const NamedClass& named) {
  const ClassDeclaration& declared = *named.record->declaration;
  switch (named.state) {
    case NamedClass::State::kFiled:
      break;
    case NamedClass::State::kNamesNoHost:
      return "not filed: it names no hosting service and has no service side";
    case NamedClass::State::kHostUnknown:
      if (!declared.xsname) return "not filed: no service is called \"GenLWSC\"";
      return declared.xsversion > 0
                 ? fmt::format("not filed: no service of version {} or newer is called {}",
                               declared.xsversion, Quoted(declared.xsname->text))
                 : fmt::format("not filed: no service is called {}", Quoted(declared.xsname->text));
    case NamedClass::State::kHostElsewhere:
      return "not filed: its hosting service is none of this load point";
  }
  return "";
}

// The test that decides about a candidate.
struct Reason {
  const char* test;
  std::string why;
};

// Why a candidate that would do is not the one that is found.
std::string LaterText(const NamedClass& named, const NamedClass& found) {
  const bool isScoped = !btkUniIdIsNull(found.loadpoint->scope);
  const char* const why = isScoped && btkUniIdIsNull(named.loadpoint->scope)
                              ? "is of the scope itself"
                          : found.version != named.version ? "is newer"
                                                           : "has been added later";
  return fmt::format("{} comes first: it {}", PlaceText(PlaceOf(found)), why);
}

Reason ReasonOf(const Candidate& candidate, const Query& query, const NamedClass* found) {
  const NamedClass& named = *candidate.named;
  switch (candidate.test) {
    case Candidate::Test::kFound:
      return {"found", "found"};
    case Candidate::Test::kNotFiled:
      return {"filed", NotFiledText(named)};
    case Candidate::Test::kVersionTooLow:
      return {"version", fmt::format("service version {} is older than {}", named.version,
                                     std::max<int>(query.version, 0))};
    case Candidate::Test::kAboveLimit:
      return {"limit", fmt::format("its oldest supported version {} is above the limit {}",
                                   named.minVersion, query.limit)};
    case Candidate::Test::kOtherScope:
      return {"scope", fmt::format("it is for callers {}", ScopeText(named.loadpoint->scope))};
    case Candidate::Test::kLater:
      return {"order", LaterText(named, *found)};
  }
  return {"", ""};
}

std::string QueryText(const Query& query) {
  std::string text =
      fmt::format("class {} for callers {}", Quoted(query.name), ScopeText(query.scope));
  if (query.version > 0) text += fmt::format(", service version {} or newer", query.version);
  if (query.limit < INT16_MAX)
    text += fmt::format(", oldest supported version {} or older", query.limit);
  return text;
}

void PrintText(const Query& query, const std::vector<Candidate>& candidates,
               const NamedClass* found) {
  ShowText("{}\n", QueryText(query));
  for (const Candidate& candidate : candidates) {
    const NamedClass& named = *candidate.named;
    ShowText("{} {}: {}\n", candidate.test == Candidate::Test::kFound ? "->" : "  ",
             PlaceText(PlaceOf(named)), ReasonOf(candidate, query, found).why);
    if (named.state != NamedClass::State::kFiled) continue;
    ShowText("     service version {}, {}\n", named.version, ScopeText(named.loadpoint->scope));
  }
}

Json ToJson(const Candidate& candidate, const Query& query, const NamedClass* found) {
  const NamedClass& named = *candidate.named;
  const Place place = PlaceOf(named);
  const Position at = place.source->At(place.span.begin);
  const auto& id = named.record->declaration->id;
  const bool isFiled = named.state == NamedClass::State::kFiled;
  const Reason reason = ReasonOf(candidate, query, found);
  return {{"file", place.source->Path()},
          {"line", at.line},
          {"column", at.column},
          {"id", id ? Json(IdText(id->id)) : Json()},
          {"loadpoint", named.loadpoint->path},
          {"scope", IdText(named.loadpoint->scope)},
          {"svcVersion", isFiled ? Json(named.version) : Json()},
          {"found", candidate.test == Candidate::Test::kFound},
          {"test", reason.test},
          {"why", reason.why}};
}

Json ToJson(const Query& query, const std::vector<Candidate>& candidates, const NamedClass* found) {
  Json array = Json::array();
  for (const Candidate& candidate : candidates)
    array.push_back(ToJson(candidate, query, found));
  return {{"class", query.name},
          {"scope", IdText(query.scope)},
          {"version", query.version},
          {"limit", query.limit},
          {"candidates", std::move(array)}};
}

void PrintUnknown(const Answers& answers, const std::string& name) {
  std::set<std::string> names;
  for (const NamedClass& named : answers.Classes())
    names.emplace(named.Name());
  Tell("no class is called {}{}", Quoted(name),
       NameHint(name, {names.begin(), names.end()}, "declared are"));
}

}  // namespace

int RunWhyClass(const WhyClassOptions& options) {
  const Query query{options.name, options.scope.empty() ? UniIdT{} : ParseId(options.scope),
                    options.version, options.limit};
  const CheckedProcess process(options.process);
  const std::vector<Candidate> candidates = process.Answers().Candidates(query);
  const NamedClass* const found = process.Answers().Find(query);
  if (options.json) {
    fmt::print("{}", FormText(json_format::kWhyClass, ToJson(query, candidates, found)));
  } else if (!candidates.empty()) {
    PrintText(query, candidates, found);
  }
  process.PrintRefused();
  if (candidates.empty()) PrintUnknown(process.Answers(), options.name);
  return found != nullptr ? 0 : 1;
}

}  // namespace tool
