// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: content.
#ifndef CHECK_CATALOGUE_CONTENT_RULES_H
#define CHECK_CATALOGUE_CONTENT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kContentRules[] = {
    {Rule::kOnlyText, "only-text", Severity::kError, "42", Fix::kSafe,
     "Something else than text stands in an element that holds text.",
     "An argument is one piece of text, and the value of a variable begins with text: a comment or "
     "a CDATA section in its place refuses the whole file. Write comments before the element.",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <args>
      <arg><!-- not now -->--verbose</arg>
    </args>
  </app>
</runnable>)",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <args>
      <!-- not now -->
      <arg>--verbose</arg>
    </args>
  </app>
</runnable>)"},
    {Rule::kTextForbidden, "text-forbidden", Severity::kError, "42", Fix::kSafe,
     "Something stands in an element that must be empty.",
     "Not even a blank or a line break may stand there. Write the element without an end tag.",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <unset name="LANG"> </unset>
    </env>
  </app>
</runnable>)",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <unset name="LANG"/>
    </env>
  </app>
</runnable>)"},
    {Rule::kOnlyElements, "only-elements", Severity::kError, "42", Fix::kOffered,
     "Something else than elements, comments and blanks stands between elements.",
     "Processing instructions, CDATA sections and references to entities refuse the whole file "
     "there. Instructions may stand before the root.",
     R"(<modules>
  <?sorted by="id"?>
  <module id="codecs" name="codecs"/>
</modules>)",
     R"(<modules>
  <!-- sorted by id -->
  <module id="codecs" name="codecs"/>
</modules>)"},
    {Rule::kTextMissing, "text-missing", Severity::kError, "42", Fix::kNone,
     "An element that needs a text is empty.",
     "A variable cannot be set to the empty text; <unset> takes it away.",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <set name="LANG"/>
    </env>
  </app>
</runnable>)",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <unset name="LANG"/>
    </env>
  </app>
</runnable>)"},
    {Rule::kTextCut, "text-cut", Severity::kWarning, "", Fix::kNone,
     "Only the first part of a value is read.",
     "The value ends at the first comment, CDATA section, element, instruction or entity, and what "
     "stands after it is lost without a word. Write it in one piece.",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <append name="PATH">:/opt/tools<!-- ours -->:/opt/viewer</append>
    </env>
  </app>
</runnable>)",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <env>
      <!-- ours -->
      <append name="PATH">:/opt/tools:/opt/viewer</append>
    </env>
  </app>
</runnable>)"},
    {Rule::kStrayText, "stray-text", Severity::kWarning, "", Fix::kOffered,
     "Text between elements is passed over.",
     "Nothing reads it. What is meant for people is better a comment; a name or a value belongs "
     "into an attribute.",
     R"(<modules>
  Needed by the viewer.
  <module id="codecs" name="codecs"/>
</modules>)",
     R"(<modules>
  <!-- Needed by the viewer. -->
  <module id="codecs" name="codecs"/>
</modules>)"},
    {Rule::kContentBesideModuleref, "content-beside-moduleref", Severity::kError, "261", Fix::kSafe,
     "A side names its module and is not empty.",
     "A side either names its module or holds one. Where it names one, a blank or a line break "
     "between its tags is refused as well.",
     R"(<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside moduleref="codecs"> </clientside>
</class>)",
     R"(<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside moduleref="codecs"/>
</class>)"},
    {Rule::kSideIncomplete, "side-incomplete", Severity::kError, "1", Fix::kNone,
     "A side lacks its module, its service or its host.",
     "A client or agent side names a module or holds one. A service side has a module and "
     "\"svcid\", which a worker class does not need, or leaves both to its host, \"xsid\".",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler"/>
</runnable>
<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902" affinity="service">
  <serviceside moduleref="codecs" xsid="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011"/>
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
    {Rule::kSideForbidden, "side-forbidden", Severity::kError, "39", Fix::kNone,
     "A class of this affinity has no such side.",
     "Only service classes have a service side, agent classes have no client side, app classes no "
     "agent side. A class without \"affinity\" is generic.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler"/>
</runnable>
<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside moduleref="codecs"/>
  <serviceside xsid="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011"/>
</class>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler"/>
</runnable>
<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902" affinity="service">
  <clientside moduleref="codecs"/>
  <serviceside xsid="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011"/>
</class>)"},
    {Rule::kSideTwice, "side-twice", Severity::kError, "261", Fix::kNone,
     "A class has a side twice, or a side has two modules.",
     "Every side has one module. Other files of the same module, for other machine types, are "
     "<platformmodule> elements in it.",
     R"(<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside moduleref="codecs"/>
  <clientside moduleref="codecs"/>
</class>)",
     R"(<module id="codecs" name="codecs"/>
<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside moduleref="codecs"/>
</class>)"},
    {Rule::kNestedNotShared, "nested-not-shared", Severity::kError, "154", Fix::kNone,
     "The module of a side is no shared library.",
     "What implements a side is loaded into a process, which only a shared library can be; leave "
     "\"type\" out. Programs are declared beside the class.",
     R"(<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside multiplicity="perProcess">
    <module name="viewer" type="executable"/>
  </clientside>
</class>)",
     R"(<class id="3d2f8e61-90ab-4c1d-8f27-1e64a0c5b902">
  <clientside multiplicity="perProcess">
    <module name="viewer"/>
  </clientside>
</class>)"},
    {Rule::kSecondBareElement, "second-bare-element", Severity::kError, "261", Fix::kSafe,
     "Several elements of a kind stand outside a list.",
     "A manifest of one kind holds a single element of it, or any number once a list has stood "
     "before them. Put them into the list, or use <tarnmanifest>.",
     R"(<tarnmodulemanifest version="1">
  <module id="codecs" name="codecs"/>
  <module id="fonts" name="fonts"/>
</tarnmodulemanifest>)",
     R"(<tarnmodulemanifest version="1">
  <modules>
    <module id="codecs" name="codecs"/>
    <module id="fonts" name="fonts"/>
  </modules>
</tarnmodulemanifest>)"},
    {Rule::kRolePartTwice, "role-part-twice", Severity::kWarning, "", Fix::kNone,
     "A later part of a role replaces an earlier one.",
     "Of several <args> or <env> of a role the last one counts, and what the others say is lost. "
     "Put everything into one.",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <args><arg>--verbose</arg></args>
    <args><arg>--wait</arg></args>
  </app>
</runnable>)",
     R"(<module id="viewer" name="viewer" type="executable"/>
<runnable moduleref="viewer">
  <app nameid="viewer">
    <args><arg>--verbose --wait</arg></args>
  </app>
</runnable>)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_CONTENT_RULES_H
