// Rules of the catalogue: files.
#ifndef CHECK_CATALOGUE_FILE_RULES_H
#define CHECK_CATALOGUE_FILE_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kFileRules[] = {
    {Rule::kFileMissing, "file-missing", Severity::kWarning, "", Fix::kOffered,
     "The file of a module is not there.", "", "", ""},
    {Rule::kNoImplementation, "no-implementation", Severity::kWarning, "", Fix::kNone,
     "A module has no file for this machine type.", "", "", ""},
    {Rule::kPathTooLong, "path-too-long", Severity::kWarning, "", Fix::kNone,
     "The path of the process's load point is too long to be used.", "", "", ""},
    {Rule::kOutsideLoadpoint, "outside-loadpoint", Severity::kWarning, "", Fix::kNone,
     "A path leads out of the load point.", "", "", ""},
    {Rule::kBackslash, "backslash", Severity::kWarning, "", Fix::kSafe,
     "A backslash in a path separates nothing on this system.", "", "", ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_FILE_RULES_H
