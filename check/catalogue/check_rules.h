// Rules of the catalogue: check itself.
#ifndef CHECK_CATALOGUE_CHECK_RULES_H
#define CHECK_CATALOGUE_CHECK_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kCheckRules[] = {
    {Rule::kAllowUnknown, "allow-unknown", Severity::kWarning, "", Fix::kOffered,
     "An allowance names no rule, or one that cannot be allowed.", "", "", ""},
    {Rule::kAllowUnused, "allow-unused", Severity::kWarning, "", Fix::kSafe,
     "An allowance has nothing to allow.", "", "", ""},
    {Rule::kLibraryDisagrees, "library-disagrees", Severity::kError, "any", Fix::kNone,
     "The library refuses what nothing was found in, or accepts what it should refuse.", "", "",
     ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_CHECK_RULES_H
