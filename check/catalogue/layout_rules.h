// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: layout files and installations.
#ifndef CHECK_CATALOGUE_LAYOUT_RULES_H
#define CHECK_CATALOGUE_LAYOUT_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kLayoutRules[] = {
    {Rule::kLineNotEnded, "line-not-ended", Severity::kError, "432", Fix::kSafe,
     "The last line of a layout file lacks its line feed.",
     "Every statement and every comment ends with a line feed, the last one included. Without it "
     "the whole installation is refused.",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
bits = 64)",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
bits = 64
)"},
    {Rule::kLayoutSyntax, "layout-syntax", Severity::kError, "432, for other text than UTF-8 71",
     Fix::kNone, "A statement of a layout file cannot be read.",
     "The whole installation is refused. The statements are base = \"FOLDER\", scope = ID, bits = "
     "NUMBER, version = TEXT and layout += BITS { \"TEXT\" | \"TEXT\" | \"TEXT\", ... | ... | ... "
     "}. "
     "The file is read in blocks of 2,048 bytes, and no statement may reach from one into the "
     "next.",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
layout = 64 { "vector" | "release" }
)",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
layout += 64 { "vector" | "release" }
)"},
    {Rule::kLayoutKeyUnknown, "layout-key-unknown", Severity::kWarning, "", Fix::kOffered,
     "A layout file has a key that is not known and passed over.",
     "Keys are written in lower case: base, scope, bits, version and layout. A line that begins "
     "with another character than a letter is a comment. A key that stands alone on its line takes "
     "the next line with it.",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
Bits = 64
)",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
bits = 64
)"},
    {Rule::kLayoutBits, "layout-bits", Severity::kWarning, "", Fix::kNone,
     "A layout is passed over because of its bits.",
     "Layouts are for 32 bits, for 64 bits, or for 32-bit machines of a 64-bit installation "
     "(3264); "
     "one for 64-bit machines of a 32-bit installation (6432) counts only where the file says bits "
     "= 32. All others are passed over.",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
layout += 6432 { "vector" | "release" }
)",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
bits = 32
layout += 6432 { "vector" | "release" }
)"},
    {Rule::kBaseMissing, "base-missing", Severity::kWarning, "", Fix::kNone,
     "The base folder of an installation is not there.",
     "The files of all modules are looked for below it. The folder is named relative to the "
     "directory of the layout file.",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
base = "files"
)",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== pack/.installed
base = "files"
== pack/files/readme.txt
The files of the pack.
)"},
    {Rule::kDuplicateLoadpoint, "duplicate-loadpoint", Severity::kError, "261", Fix::kNone,
     "Two installations have one base folder.",
     "A load point is known by its path, and the second one is refused. Without a layout file, or "
     "without a base in it, the base is the parent of the directory, so that two directories side "
     "by side have the same.",
     R"(
$ pack extras
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== extras/modules.tmfx
<tarnmodulemanifest version="1"/>
)",
     R"(
$ pack extras
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
== extras/modules.tmfx
<tarnmodulemanifest version="1"/>
== extras/.installed
base = "."
)"},
    {Rule::kNoManifests, "no-manifests", Severity::kWarning, "", Fix::kNone,
     "A directory has no manifest.",
     "Manifests are the files of the directory itself whose names end with \".tmfx\", in lower "
     "case; "
     "folders below it are not searched. A load point without one is known and holds nothing.",
     R"(
== pack/manifests/modules.tmfx
<tarnmodulemanifest version="1"/>
)",
     R"(
== pack/modules.tmfx
<tarnmodulemanifest version="1"/>
)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_LAYOUT_RULES_H
