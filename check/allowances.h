// SPDX-License-Identifier: Apache-2.0
// Allowances: comments in which the writer of a file says that something is on purpose.
//   <!-- tarnmf: allow file-missing, backslash (built by CI) -->   the next element beside it, with all
//                                                                 that it holds; before the root: the
//                                                                 whole file
//   # tarnmf: allow layout-bits (for the old machines)             the next statement of a layout file
#ifndef CHECK_ALLOWANCES_H
#define CHECK_ALLOWANCES_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "check/finding.h"
#include "check/installation.h"
#include "check/manifest.h"
#include "check/rules.h"
#include "check/source.h"

namespace tarnmf::check {

// One rule of one comment.
struct Allowance {
  Rule rule = Rule::kAllowUnused;
  Span name;                // of the rule, in the comment
  std::size_t comment = 0;  // number of the comment in Allowances::comments
  Span covered;             // where findings of the rule are allowed
  bool isUsed = false;
};

struct AllowComment {
  Span span;              // what is deleted with it
  std::size_t named = 0;  // words that are to be rules
  std::string_view reason;
};

struct Allowances {
  const Source* source = nullptr;
  std::vector<AllowComment> comments;
  std::vector<Allowance> rules;   // in the order of the file
  std::vector<Finding> misspelt;  // allow-unknown
};

Allowances AllowancesOf(const Manifest& manifest);
Allowances AllowancesOf(const LayoutFileText& layout);

// Whether a line of a layout file is the first one of a statement.
bool BeginsStatement(std::string_view line);

// Only what the library accepts can be allowed.
bool CanBeAllowed(Rule rule);

// The allowance that covers each finding, or null. `findings` are those of the file, by their
// places. The allowances that cover one are marked as used.
std::vector<const Allowance*> Cover(Allowances& allowances, const std::vector<Finding>& findings);

// How far around a file it was judged, the least first.
enum class Judged {
  kNotToItsEnd,  // what is not told may be there nevertheless
  kFileAlone,
  kLoadPoint,  // the load point's records and files with it
  kProcess,    // and the other load points, that of the process among them
};

// allow-unused, for those that cover no finding of a rule that was judged.
std::vector<Finding> UnusedAllowances(const Allowances& allowances, Judged judged);

}  // namespace tarnmf::check

#endif  // CHECK_ALLOWANCES_H
