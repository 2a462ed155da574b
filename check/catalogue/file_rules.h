// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: files.
#ifndef CHECK_CATALOGUE_FILE_RULES_H
#define CHECK_CATALOGUE_FILE_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kFileRules[] = {
    {Rule::kFileMissing, "file-missing", Severity::kWarning, "", Fix::kOffered,
     "The file of a module is not there.",
     "The module is registered all the same, and whoever uses it fails. A file is looked for in "
     "the "
     "folder of the machine type below the load point, then in the load point itself; \"path\" is "
     "a "
     "folder below either. The name of a shared library is written without what the system puts "
     "around it, unless \"explicitname\" takes it as it stands.",
     R"(
== pack/.installed
base = "files"
== pack/modules.tmfx
<tarnmodulemanifest version="1">
  <module id="ws.journal" name="jurnal"/>
</tarnmodulemanifest>
== pack/files/libjournal.so
)",
     R"(
== pack/.installed
base = "files"
== pack/modules.tmfx
<tarnmodulemanifest version="1">
  <module id="ws.journal" name="journal"/>
</tarnmodulemanifest>
== pack/files/libjournal.so
)"},
    {Rule::kNoImplementation, "no-implementation", Severity::kWarning, "", Fix::kNone,
     "A module has no file for this machine type.",
     "The module has implementations for machines of other types, and its own file, which serves "
     "all others, is not there. On this machine it cannot be used.",
     R"(
<module id="ws.codecs" name="codecs">
  <platformmodule machinetype="windows-x64" name="codecs64"/>
</module>
)",
     R"(
== pack/.installed
base = "files"
== pack/modules.tmfx
<tarnmodulemanifest version="1">
  <module id="ws.codecs" name="codecs">
    <platformmodule machinetype="windows-x64" name="codecs64"/>
  </module>
</tarnmodulemanifest>
== pack/files/libcodecs.so
)"},
    {Rule::kPathTooLong, "path-too-long", Severity::kWarning, "", Fix::kNone,
     "The path of a load point is too long for the one of a process.",
     "The path of a process's own load point has to fit into 260 UTF-16 units. Of a longer one the "
     "process takes nothing: it has no load point, and none of its modules finds its file. An "
     "installation may lie deeper, but no program that is started with it as its load point.",
     nullptr, nullptr},
    {Rule::kOutsideLoadpoint, "outside-loadpoint", Severity::kWarning, "", Fix::kNone,
     "A path leads out of the load point.",
     "Where \"path\" or \"name\" has a component \"..\", the file is not looked for, wherever it "
     "would be: what an installation does not contain may change or vanish without it. Put the "
     "file "
     "into the load point, name the load point that holds it by \"loadpoint\", or say by "
     "\"forcepath\" that a path is not meant to lie below one.",
     R"(
<module id="ws.codecs" name="codecs" path="../../shared/lib"/>
)",
     R"(
<module id="ws.codecs" name="codecs" path="shared/lib"/>
)"},
    {Rule::kBackslash, "backslash", Severity::kWarning, "", Fix::kSafe,
     "A backslash in a path separates nothing on this system.",
     "The backslash is part of a name here, and such a file is not there. A slash separates on "
     "every system.",
     R"(
<module id="ws.codecs" name="codecs" path="lib\codecs"/>
)",
     R"(
<module id="ws.codecs" name="codecs" path="lib/codecs"/>
)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_FILE_RULES_H
