// SPDX-License-Identifier: Apache-2.0
// What is found in a file.
#ifndef CHECK_FINDING_H
#define CHECK_FINDING_H

#include <string>
#include <vector>

#include "check/rules.h"
#include "check/source.h"
#include "platform/errors.h"

namespace tarnmf::check {

// A place in a file. The source has to outlive it.
struct Place {
  const Source* source = nullptr;
  Span span;
};

struct Edit {
  Span span;         // what is replaced
  std::string text;  // what it is replaced by
};

struct Suggestion {
  std::string title;        // what it does, as an instruction: Replace "nmae" by "name"
  bool safe = false;        // certain enough to be applied without a question
  std::vector<Edit> edits;  // in the file of the finding; they do not overlap
};

struct Related {
  Place place;
  std::string message;
};

struct Finding {
  Rule rule = Rule::kNotWellFormed;
  Severity severity = Severity::kError;
  BtkErrorT code = kBtkOk;  // the library's; kBtkOk: none
  Place place;
  std::string message;  // one sentence, without a full stop
  std::vector<Suggestion> suggestions;
  std::vector<Related> related;
};

// A finding of the rule's own severity.
Finding Found(Rule rule, BtkErrorT code, Place place, std::string message);

}  // namespace tarnmf::check

#endif  // CHECK_FINDING_H
