// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: elements and attributes.
#ifndef CHECK_CATALOGUE_ELEMENT_RULES_H
#define CHECK_CATALOGUE_ELEMENT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kElementRules[] = {
    {Rule::kElementUnknown, "element-unknown", Severity::kError, "42", Fix::kSafe,
     "An element that is not known.",
     "The whole file is refused. Letter case makes no difference, but a prefix does: names are "
     "compared as they stand.",
     R"(<modul id="codecs" name="codecs"/>)", R"(<module id="codecs" name="codecs"/>)"},
    {Rule::kElementMisplaced, "element-misplaced", Severity::kError, "42", Fix::kNone,
     "An element stands where it has no place.",
     "The whole file is refused. Move the element to where it belongs, or put around it what is "
     "missing there.",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <set name="LANG">C</set>
  </app>
</runnable>)",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <set name="LANG">C</set>
    </env>
  </app>
</runnable>)"},
    {Rule::kAttributeUnknown, "attribute-unknown", Severity::kError, "42", Fix::kSafe,
     "An attribute that its element does not have.",
     "The whole file is refused. Declarations of namespaces and schema locations count as "
     "attributes, too: name the schema for an editor by an instruction before the root.",
     R"(<module id="codecs" nmae="codecs"/>)", R"(<module id="codecs" name="codecs"/>)"},
    {Rule::kAttributeRefused, "attribute-refused", Severity::kError, "34", Fix::kOffered,
     "An attribute that is known and never admitted.",
     "The whole file is refused, whatever the value. Leave the attribute out; say by \"path\" and "
     "\"forcepath\" where the file is.",
     R"(<module id="codecs" name="codecs" resolvepath="no"/>)",
     R"(<module id="codecs" name="codecs"/>)"},
    {Rule::kAttributeMissing, "attribute-missing", Severity::kError, "1, for a root 42", Fix::kSafe,
     "A required attribute is missing.",
     "The whole file is refused. Only a module that stands in a side of a class needs no id.",
     R"(<module name="codecs"/>)", R"(<module id="codecs" name="codecs"/>)"},
    {Rule::kAttributeTwice, "attribute-twice", Severity::kError, "261, for a root 42", Fix::kSafe,
     "An attribute is given twice, in different letter case.",
     "Names are compared whatever their letter case, so that both are the same attribute. Leave "
     "one of them out.",
     R"(<module id="codecs" name="codecs" ID="codecs"/>)",
     R"(<module id="codecs" name="codecs"/>)"},
    {Rule::kAttributeNeeds, "attribute-needs", Severity::kError, "1 or 39", Fix::kNone,
     "An attribute needs another one beside it.",
     "The attribute says something about the other one and nothing without it, so the whole file "
     "is refused.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" version="2"/>
</runnable>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler" version="2"/>
</runnable>)"},
    {Rule::kAttributeExcludes, "attribute-excludes", Severity::kError, "1 or 39", Fix::kNone,
     "Two attributes exclude each other.",
     "The two would say different things about the same matter. Decide for one of them.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler"/>
</runnable>
<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902" affinity="service">
  <serviceside moduleref="codecs" svcid="c81e7d40-5a2b-4e9f-b6d3-07f1a2934e5c"
               xsid="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" xsname="Spooler"/>
</class>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler"/>
</runnable>
<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902" affinity="service">
  <serviceside moduleref="codecs" svcid="c81e7d40-5a2b-4e9f-b6d3-07f1a2934e5c"
               xsid="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011"/>
</class>)"},
    {Rule::kNothingGiven, "nothing-given", Severity::kError, "1", Fix::kNone,
     "An element needs one of several attributes and has none of them.",
     "The element would change nothing, so the whole file is refused. Give one of the attributes "
     "or leave the element out.",
     R"(<module id="codecs" name="codecs">
  <platformmodule machinetype="linux-x64"/>
</module>)",
     R"(<module id="codecs" name="codecs">
  <platformmodule machinetype="linux-x64" name="codecs-sse"/>
</module>)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_ELEMENT_RULES_H
