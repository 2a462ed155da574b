// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: values of attributes.
#ifndef CHECK_CATALOGUE_VALUE_RULES_H
#define CHECK_CATALOGUE_VALUE_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kValueRules[] = {
    {Rule::kEmptyValue, "empty-value", Severity::kError, "432", Fix::kNone,
     "A value must not be empty.",
     "An attribute that is left out has its default; one that is empty is refused. A list of words "
     "needs one word at least.",
     R"(<module id="codecs" name="codecs" type=""/>)", R"(<module id="codecs" name="codecs"/>)"},
    {Rule::kBadNumber, "bad-number", Severity::kError, "432", Fix::kNone,
     "A number is outside 32 bits, too long, or not one of those admitted.",
     "Numbers lie between -2147483648 and 2147483647 and take 15 characters at most; address bits "
     "are 32 or 64.",
     R"(<module id="codecs" name="codecs" abits="48"/>)",
     R"(<module id="codecs" name="codecs" abits="64"/>)"},
    {Rule::kOutOfRange, "out-of-range", Severity::kError, "66", Fix::kNone,
     "A number is not between 0 and 32767.",
     "Ports of services and versions of classes are kept in 16 bits with a sign. Leave the port "
     "out when there is none.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" port="70000"/>
</runnable>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" port="7000"/>
</runnable>)"},
    {Rule::kWrongVersion, "wrong-version", Severity::kError, "416", Fix::kNone,
     "The version of the document format is not 1.",
     "The version on the root is that of the format and not that of your product, which versions "
     "of classes and services tell.",
     R"(<tarnmanifest version="2">
  <module id="codecs" name="codecs"/>
</tarnmanifest>)",
     R"(<tarnmanifest version="1">
  <module id="codecs" name="codecs"/>
</tarnmanifest>)"},
    {Rule::kBadId, "bad-id", Severity::kError, "432", Fix::kSafe, "A value is no id.",
     "An id is written as 32 hexadecimal digits, or as 36 characters with dashes after 8, 12, 16 "
     "and 20 digits: without braces, blanks or a prefix.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="{b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011}"/>
</runnable>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011"/>
</runnable>)"},
    {Rule::kBadBoolean, "bad-boolean", Severity::kError, "432", Fix::kSafe,
     "A value is neither yes nor no.",
     "Write \"yes\" or \"true\", \"no\" or \"false\", in either letter case; digits are no words.",
     R"(<module id="codecs" name="codecs" private="1"/>)",
     R"(<module id="codecs" name="codecs" private="yes"/>)"},
    {Rule::kBadKeyword, "bad-keyword", Severity::kError, "432 or 39", Fix::kSafe,
     "A value is none of the words of its attribute.",
     "The words of each attribute are fixed; letter case makes no difference, blanks do. A class "
     "is never a container.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" multiplicity="single"/>
</runnable>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" multiplicity="singleInstance"/>
</runnable>)"},
    {Rule::kNotANumber, "not-a-number", Severity::kWarning, "", Fix::kSafe,
     "A number is followed by text that is not read.",
     "Reading stops at the first character that is no digit, and a text without digits is 0: "
     "\"1.2.0\" is version 1. Write one whole number.",
     R"(<module id="codecs" name="codecs" apilevel="three"/>)",
     R"(<module id="codecs" name="codecs" apilevel="3"/>)"},
    {Rule::kNumberWraps, "number-wraps", Severity::kWarning, "", Fix::kNone,
     "A service version is too large or negative to be found.",
     "Service versions are filed in 16 bits after they have been doubled: one above 16383 comes "
     "out as another one, and a negative one is never asked for.",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler" version="20260"/>
</runnable>)",
     R"(<module id="spooler" name="spooler" type="executable"/>
<runnable moduleref="spooler">
  <service id="b0a4cf5e-3e0c-4f6e-9a39-5d1c7be8a011" commonname="Spooler" version="26"/>
</runnable>)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_VALUE_RULES_H
