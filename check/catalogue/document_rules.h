// Rules of the catalogue: documents.
#ifndef CHECK_CATALOGUE_DOCUMENT_RULES_H
#define CHECK_CATALOGUE_DOCUMENT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kDocumentRules[] = {
    {Rule::kUnreadable, "unreadable", Severity::kError, "1", Fix::kNone, "A file cannot be read.",
     "", "", ""},
    {Rule::kNotWellFormed, "not-well-formed", Severity::kError, "", Fix::kNone,
     "A document is no well-formed XML; what follows the fault is not judged.", "", "", ""},
    {Rule::kEncoding, "encoding", Severity::kInfo, "", Fix::kNone,
     "A document is not written in UTF-8.", "", "", ""},
    {Rule::kDoctype, "doctype", Severity::kWarning, "", Fix::kNone,
     "A document type declaration changes what is read.", "", "", ""},
    {Rule::kExternalEntity, "external-entity", Severity::kWarning, "", Fix::kNone,
     "A document makes its reader fetch another file or address.", "", "", ""},
    {Rule::kEntityExpansion, "entity-expansion", Severity::kWarning, "", Fix::kNone,
     "References to entities make a document far larger than its file.", "", "", ""},
    {Rule::kEntityUnreadable, "entity-unreadable", Severity::kError, "42 or none", Fix::kNone,
     "An external document type or entity cannot be read.", "", "", ""},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_DOCUMENT_RULES_H
