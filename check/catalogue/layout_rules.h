// Rules of the catalogue: layout files and installations.
#ifndef CHECK_CATALOGUE_LAYOUT_RULES_H
#define CHECK_CATALOGUE_LAYOUT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kLayoutRules[] = {
    {Rule::kLineNotEnded, "line-not-ended", Severity::kError, "432", Fix::kSafe,
     "The last line of a layout file lacks its line feed.", "", "", ""},
    {Rule::kLayoutSyntax, "layout-syntax", Severity::kError, "432", Fix::kNone,
     "A statement of a layout file cannot be read.", "", "", ""},
    {Rule::kLayoutKeyUnknown, "layout-key-unknown", Severity::kWarning, "", Fix::kOffered,
     "A layout file has a key that is not known and passed over.", "", "", ""},
    {Rule::kLayoutBits, "layout-bits", Severity::kWarning, "", Fix::kNone,
     "A layout is passed over because of its bits.", "", "", ""},
    {Rule::kBaseMissing, "base-missing", Severity::kWarning, "", Fix::kNone,
     "The base folder of an installation is not there.", "", "", ""},
    {Rule::kDuplicateLoadpoint, "duplicate-loadpoint", Severity::kError, "261", Fix::kNone,
     "Two installations have one base folder.", "", "", ""},
    {Rule::kNoManifests, "no-manifests", Severity::kWarning, "", Fix::kNone,
     "A directory has no manifest.", "", "", ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_LAYOUT_RULES_H
