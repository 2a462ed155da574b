// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: documents.
#ifndef CHECK_CATALOGUE_DOCUMENT_RULES_H
#define CHECK_CATALOGUE_DOCUMENT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kDocumentRules[] = {
    {Rule::kUnreadable, "unreadable", Severity::kError, "1 or none", Fix::kNone,
     "A file or a folder cannot be read.",
     "A manifest that cannot be opened makes the whole load point refused. A folder, a layout file "
     "and a link that leads nowhere are silently taken for not being there, and their records, the "
     "base or the scope are lost. Let those who run the program read it, or take it away.",
     nullptr, nullptr},
    {Rule::kNotWellFormed, "not-well-formed", Severity::kError, "", Fix::kNone,
     "A document is no well-formed XML; what follows the fault is not judged.",
     "The library reads as much of such a file as there is before the fault, and tells nobody. "
     "Mend the fault, then check again: what stands after it has not been looked at.",
     R"(<modules>
  <module id="acme.codec" name="codec"></modul>
</modules>)",
     R"(<modules>
  <module id="acme.codec" name="codec"></module>
</modules>)"},
    {Rule::kEncoding, "encoding", Severity::kInfo, "", Fix::kNone,
     "A document is not written in UTF-8.",
     "The library reads many encodings, but editors, searches and other tools may not, and check "
     "--fix touches no file that is not written in UTF-8. Convert the file and declare UTF-8, or "
     "nothing.",
     R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<tarnmanifest version="1"/>)",
     R"(<?xml version="1.0" encoding="UTF-8"?>
<tarnmanifest version="1"/>)"},
    {Rule::kDoctype, "doctype", Severity::kWarning, "", Fix::kNone,
     "A document type declaration changes what is read.",
     "Entities and attributes by default make a manifest read other than it is written, and a "
     "reference to an entity between elements is refused. Write out what is meant, and leave the "
     "declaration away.",
     R"(<!DOCTYPE tarnmanifest [<!ENTITY vendor "acme">]>
<tarnmanifest version="1">
  <module id="&vendor;.codec" name="codec"/>
</tarnmanifest>)",
     R"(<tarnmanifest version="1">
  <module id="acme.codec" name="codec"/>
</tarnmanifest>)"},
    {Rule::kExternalEntity, "external-entity", Severity::kWarning, "", Fix::kNone,
     "A document makes its reader fetch another file or address.",
     "Every process that reads the manifest fetches the file or address as well, waits for it, "
     "and refuses or cuts the manifest when it is not there. Checks read nothing of it. Leave "
     "the document type away: manifests need none.",
     R"(<!DOCTYPE tarnmanifest SYSTEM "https://schemas.example.com/tarnmanifest.dtd">
<tarnmanifest version="1"/>)",
     R"(<tarnmanifest version="1"/>)"},
    {Rule::kEntityExpansion, "entity-expansion", Severity::kWarning, "", Fix::kNone,
     "References to entities make a document far larger than its file.",
     "Entities that are made of entities can fill the memory of every process that reads the "
     "manifest. Write out what is meant.",
     R"(<!DOCTYPE tarnmanifest [
  <!ENTITY a "0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123456789">
  <!ENTITY b "&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;">
  <!ENTITY c "&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;">
  <!ENTITY d "&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;">
  <!ENTITY e "&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;">
]>
<tarnmanifest version="1">
  <module id="acme.codec" name="codec" version="&e;"/>
</tarnmanifest>)",
     R"(<tarnmanifest version="1">
  <module id="acme.codec" name="codec"/>
</tarnmanifest>)"},
    {Rule::kEntityUnreadable, "entity-unreadable", Severity::kError, "42 or none", Fix::kNone,
     "An external document type or entity cannot be read.",
     "A relative path is looked for in the working directory of whoever reads the manifest, not "
     "beside it. Without its document type the whole file is refused; without another entity "
     "everything after the first reference to it is lost, and nothing tells so. Leave the "
     "declaration away.",
     R"(<!DOCTYPE tarnmanifest SYSTEM "dtd/tarnmanifest.dtd">
<tarnmanifest version="1"/>)",
     R"(<tarnmanifest version="1"/>)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_DOCUMENT_RULES_H
