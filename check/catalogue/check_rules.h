// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: check itself.
#ifndef CHECK_CATALOGUE_CHECK_RULES_H
#define CHECK_CATALOGUE_CHECK_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kCheckRules[] = {
    {Rule::kAllowUnknown, "allow-unknown", Severity::kWarning, "", Fix::kOffered,
     "An allowance names no rule, or one that cannot be allowed.",
     "A comment \"tarnmf: allow RULE, RULE (reason)\" says that a finding is on purpose. A name "
     "that "
     "is misspelt allows nothing, and errors cannot be allowed: the library refuses the manifest "
     "all "
     "the same. Name a warning or an info as check prints it.",
     R"(
<!-- tarnmf: allow clas-hidden (kept for old callers) -->
<module id="viewer" name="viewer"/>
)",
     R"(
<!-- Kept for old callers. -->
<module id="viewer" name="viewer"/>
)"},
    {Rule::kAllowUnused, "allow-unused", Severity::kWarning, "", Fix::kSafe,
     "An allowance has nothing to allow.",
     "The oddity that it was written for is gone, or it stands at another element: it covers the "
     "next "
     "element beside it, before the root the whole file, in a layout file the next statement. Left "
     "where it is, it would hide the next mistake. Whether files and other records are there may "
     "differ from machine to machine, so that only allowances of what a file says by itself are "
     "deleted without a question.",
     R"(
<!-- tarnmf: allow not-a-number (the old tools want the points) -->
<module id="viewer" name="viewer" apilevel="3"/>
)",
     R"(
<module id="viewer" name="viewer" apilevel="3"/>
)"},
    {Rule::kLibraryDisagrees, "library-disagrees", Severity::kError, "any", Fix::kNone,
     "The library refuses what nothing was found in, or accepts what it should refuse.",
     "After its own report, check hands the same files to the library. The two have to agree, or "
     "check has a gap: please report it, with the files.",
     nullptr, nullptr},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_CHECK_RULES_H
