// SPDX-License-Identifier: Apache-2.0
// "tarnmf explain": what a rule, a code, an element or an attribute means.
#ifndef TOOLS_TARNMF_EXPLAIN_COMMAND_H
#define TOOLS_TARNMF_EXPLAIN_COMMAND_H

#include <string>

namespace tool {

struct ExplainOptions {
  std::string subject;  // RULE, CODE, ELEMENT or ELEMENT/ATTRIBUTE
  bool page = false;    // all rules instead, as docs/rules.md
  bool json = false;
};

// Returns the exit status. Throws std::invalid_argument for a subject that nothing is known about.
int RunExplain(const ExplainOptions& options);

}  // namespace tool

#endif  // TOOLS_TARNMF_EXPLAIN_COMMAND_H
