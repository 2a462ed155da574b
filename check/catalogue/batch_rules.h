// Rules of the catalogue: the records of a load point together.
#ifndef CHECK_CATALOGUE_BATCH_RULES_H
#define CHECK_CATALOGUE_BATCH_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kBatchRules[] = {
    {Rule::kDuplicateModule, "duplicate-module", Severity::kError, "42", Fix::kNone,
     "Two modules of a load point have one id.", "", "", ""},
    {Rule::kDuplicateMachinetype, "duplicate-machinetype", Severity::kError, "42", Fix::kNone,
     "A module has two implementations for one machine type.", "", "", ""},
    {Rule::kDuplicateClass, "duplicate-class", Severity::kError, "42", Fix::kNone,
     "Two classes have one id and do not complete each other.", "", "", ""},
    {Rule::kSideMissing, "side-missing", Severity::kError, "42", Fix::kNone,
     "A class lacks the side that its affinity needs.", "", "", ""},
    {Rule::kModuleRole, "module-role", Severity::kError, "42", Fix::kNone,
     "A module is given two roles that exclude each other.", "", "", ""},
    {Rule::kModuleUnknown, "module-unknown", Severity::kError, "42", Fix::kSafe,
     "A side names a module that is not declared.", "", "", ""},
    {Rule::kRunnableModuleUnknown, "runnable-module-unknown", Severity::kWarning, "", Fix::kOffered,
     "A runnable names a module that is not declared.", "", "", ""},
    {Rule::kDuplicateService, "duplicate-service", Severity::kWarning, "", Fix::kNone,
     "Two services of a load point have one id.", "", "", ""},
    {Rule::kHostUnknown, "host-unknown", Severity::kWarning, "", Fix::kNone,
     "A class is never found by name, because the service that it names as its host is not there.",
     "", "", ""},
    {Rule::kClassHidden, "class-hidden", Severity::kWarning, "", Fix::kNone,
     "A class is never found by name, because another one answers in its place.", "", "", ""},
    {Rule::kPreloadNeverHolds, "preload-never-holds", Severity::kWarning, "", Fix::kNone,
     "A condition to preload can never hold.", "", "", ""},
    {Rule::kPreloadNotActedOn, "preload-not-acted-on", Severity::kWarning, "", Fix::kNone,
     "An installation asks for a preload, which only the process's own load point does.", "", "",
     ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_BATCH_RULES_H
