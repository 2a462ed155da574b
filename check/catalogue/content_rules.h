// Rules of the catalogue: content.
#ifndef CHECK_CATALOGUE_CONTENT_RULES_H
#define CHECK_CATALOGUE_CONTENT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kContentRules[] = {
    {Rule::kOnlyText, "only-text", Severity::kError, "42", Fix::kSafe,
     "Something else than text stands in an element that holds text.", "", "", ""},
    {Rule::kTextForbidden, "text-forbidden", Severity::kError, "42", Fix::kSafe,
     "Something stands in an element that must be empty.", "", "", ""},
    {Rule::kOnlyElements, "only-elements", Severity::kError, "42", Fix::kOffered,
     "Something else than elements, comments and blanks stands between elements.", "", "", ""},
    {Rule::kTextMissing, "text-missing", Severity::kError, "42", Fix::kNone,
     "An element that needs a text is empty.", "", "", ""},
    {Rule::kTextCut, "text-cut", Severity::kWarning, "", Fix::kNone,
     "Only the first part of a value is read.", "", "", ""},
    {Rule::kStrayText, "stray-text", Severity::kWarning, "", Fix::kOffered,
     "Text between elements is passed over.", "", "", ""},
    {Rule::kContentBesideModuleref, "content-beside-moduleref", Severity::kError, "261", Fix::kSafe,
     "A side names its module and is not empty.", "", "", ""},
    {Rule::kSideIncomplete, "side-incomplete", Severity::kError, "1", Fix::kNone,
     "A side lacks its module, its service or its host.", "", "", ""},
    {Rule::kSideForbidden, "side-forbidden", Severity::kError, "39", Fix::kNone,
     "A class of this affinity has no such side.", "", "", ""},
    {Rule::kSideTwice, "side-twice", Severity::kError, "261", Fix::kNone,
     "A class has a side twice, or a side has two modules.", "", "", ""},
    {Rule::kNestedNotShared, "nested-not-shared", Severity::kError, "154", Fix::kNone,
     "The module of a side is no shared library.", "", "", ""},
    {Rule::kSecondBareElement, "second-bare-element", Severity::kError, "261", Fix::kSafe,
     "Several elements of a kind stand outside a list.", "", "", ""},
    {Rule::kRolePartTwice, "role-part-twice", Severity::kWarning, "", Fix::kNone,
     "A later part of a role replaces an earlier one.", "", "", ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_CONTENT_RULES_H
