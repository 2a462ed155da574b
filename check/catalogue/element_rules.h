// Rules of the catalogue: elements and attributes.
#ifndef CHECK_CATALOGUE_ELEMENT_RULES_H
#define CHECK_CATALOGUE_ELEMENT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kElementRules[] = {
    {Rule::kElementUnknown, "element-unknown", Severity::kError, "42", Fix::kSafe,
     "An element that is not known.", "", "", ""},
    {Rule::kElementMisplaced, "element-misplaced", Severity::kError, "42", Fix::kNone,
     "An element stands where it has no place.", "", "", ""},
    {Rule::kAttributeUnknown, "attribute-unknown", Severity::kError, "42", Fix::kSafe,
     "An attribute that its element does not have.", "", "", ""},
    {Rule::kAttributeRefused, "attribute-refused", Severity::kError, "34", Fix::kOffered,
     "An attribute that is known and never admitted.", "", "", ""},
    {Rule::kAttributeMissing, "attribute-missing", Severity::kError, "1, for a root 42", Fix::kSafe,
     "A required attribute is missing.", "", "", ""},
    {Rule::kAttributeTwice, "attribute-twice", Severity::kError, "261", Fix::kSafe,
     "An attribute is given twice, in different letter case.", "", "", ""},
    {Rule::kAttributeNeeds, "attribute-needs", Severity::kError, "1 or 39", Fix::kNone,
     "An attribute needs another one beside it.", "", "", ""},
    {Rule::kAttributeExcludes, "attribute-excludes", Severity::kError, "1 or 39", Fix::kNone,
     "Two attributes exclude each other.", "", "", ""},
    {Rule::kNothingGiven, "nothing-given", Severity::kError, "1", Fix::kNone,
     "An element needs one of several attributes and has none of them.", "", "", ""},
    {Rule::kEmptyValue, "empty-value", Severity::kError, "432", Fix::kNone,
     "A value must not be empty.", "", "", ""},
    {Rule::kBadNumber, "bad-number", Severity::kError, "432", Fix::kNone,
     "A number is outside 32 bits, too long, or not one of those admitted.", "", "", ""},
    {Rule::kOutOfRange, "out-of-range", Severity::kError, "66", Fix::kNone,
     "A number is not between 0 and 32767.", "", "", ""},
    {Rule::kWrongVersion, "wrong-version", Severity::kError, "416", Fix::kNone,
     "The version of the document format is not 1.", "", "", ""},
    {Rule::kBadId, "bad-id", Severity::kError, "432", Fix::kSafe, "A value is no id.", "", "", ""},
    {Rule::kBadBoolean, "bad-boolean", Severity::kError, "432", Fix::kSafe,
     "A value is neither yes nor no.", "", "", ""},
    {Rule::kBadKeyword, "bad-keyword", Severity::kError, "432 or 39", Fix::kSafe,
     "A value is none of the words of its attribute.", "", "", ""},
    {Rule::kNotANumber, "not-a-number", Severity::kWarning, "", Fix::kSafe,
     "A number is followed by text that is not read.", "", "", ""},
    {Rule::kNumberWraps, "number-wraps", Severity::kWarning, "", Fix::kNone,
     "A service version is too large or negative to be found.", "", "", ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_ELEMENT_RULES_H
