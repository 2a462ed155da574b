// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/argument_completion.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

#include "check/names.h"
#include "check/rules.h"
#include "check/settings.h"
#include "grammar/manifest.h"
#include "tools/tarnmf/declared_names.h"
#include "tools/tarnmf/grammar_elements.h"

namespace tool {
namespace {

using namespace tarnmf::check;
using Paths = ArgumentCompletion::Paths;
using Candidates = std::vector<Candidate>;

Candidates RuleCandidates(const char* suffix) {
  Candidates candidates;
  for (const RuleT& rule : Catalogue())
    candidates.push_back({fmt::format("{}{}", rule.name, suffix), rule.summary});
  return candidates;
}

// "NAME=", and then the levels that the rule can have.
Candidates RuleLevels(const CommandLine& line) {
  const std::size_t equals = line.word.find('=');
  if (equals == line.word.npos) return RuleCandidates("=");
  const std::string name = line.word.substr(0, equals);
  Candidates candidates;
  for (const Severity severity :
       {Severity::kOff, Severity::kInfo, Severity::kWarning, Severity::kError}) {
    const std::string_view level = LevelName(severity);
    if (!Levels().Set(name, level)) candidates.push_back({fmt::format("{}={}", name, level), ""});
  }
  return candidates;
}

// Rules and elements; attributes once their element is written.
Candidates Subjects(const CommandLine& line) {
  const std::size_t slash = line.word.find('/');
  if (slash == line.word.npos) {
    Candidates candidates = RuleCandidates("");
    for (const tarnmf::grammar::ElementT* element : GrammarElements())
      candidates.push_back({element->name, element->doc});
    return candidates;
  }
  Candidates candidates;
  const std::string written = line.word.substr(0, slash);
  if (const tarnmf::grammar::ElementT* element = ElementNamed(written)) {
    for (const tarnmf::grammar::AttributeT& attribute : element->attributes)
      candidates.push_back({fmt::format("{}/{}", written, attribute.name), attribute.doc});
  }
  return candidates;
}

Candidates OptionIds(const CommandLine& line) {
  Candidates candidates = DeclaredOptions(line);
  for (Candidate& candidate : candidates)
    candidate.text += '=';
  return candidates;
}

Candidates NamesAndIds(const CommandLine& line) {
  Candidates candidates = DeclaredClasses(line);
  for (const Candidates& more : {DeclaredModules(line), DeclaredServices(line)})
    candidates.insert(candidates.end(), more.begin(), more.end());
  return candidates;
}

// What an option, or a positional argument, takes.
struct Row {
  const char* name;
  Paths paths;
  Candidates (*candidates)(const CommandLine& line);
};
constexpr Row kRows[] = {
    {"--loadpoint", Paths::kDirectories, nullptr},
    {"--add", Paths::kDirectories, nullptr},
    {"--in", Paths::kDirectories, nullptr},
    {"DIR", Paths::kDirectories, nullptr},
    {"DIR|FILE", Paths::kFiles, nullptr},
    {"FILE", Paths::kFiles, nullptr},
    {"OLD", Paths::kFiles, nullptr},
    {"NEW", Paths::kFiles, nullptr},
    {"--rule", Paths::kNone, RuleLevels},
    {"SUBJECT", Paths::kNone, Subjects},
    {"NAME", Paths::kNone, DeclaredClasses},
    {"MODULE", Paths::kNone, DeclaredModules},
    {"ID", Paths::kNone, DeclaredServices},
    {"--service", Paths::kNone, DeclaredServices},
    {"--scope", Paths::kNone, DeclaredScopes},
    {"--option", Paths::kNone, OptionIds},
    {"--focus", Paths::kNone, NamesAndIds},
};

}  // namespace

ArgumentCompletion CompleteArgument(const CommandLine& line) {
  if (line.target == nullptr) return {};
  const std::string name = line.target->get_name();
  const Row* const row = std::find_if(std::begin(kRows), std::end(kRows),
                                      [&](const Row& each) { return each.name == name; });
  if (row == std::end(kRows)) return {};
  return {row->candidates != nullptr ? row->candidates(line) : Candidates(), row->paths};
}

}  // namespace tool
