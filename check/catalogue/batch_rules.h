// SPDX-License-Identifier: Apache-2.0
// Rules of the catalogue: the records of a load point together.
#ifndef CHECK_CATALOGUE_BATCH_RULES_H
#define CHECK_CATALOGUE_BATCH_RULES_H

#include "check/rules.h"

namespace tarnmf::check {

inline constexpr RuleT kBatchRules[] = {
    {Rule::kDuplicateModule, "duplicate-module", Severity::kError, "42", Fix::kNone,
     "Two modules of a load point have one id.",
     "Classes and runnables name their modules by these ids, so the whole load point is refused. "
     "Give one of the modules another id, or take it out.",
     R"(
<module id="codecs" name="codecs"/>
<module id="codecs" name="codecs-small"/>
)",
     R"(
<module id="codecs" name="codecs"/>
<module id="codecs.small" name="codecs-small"/>
)"},
    {Rule::kDuplicateMachinetype, "duplicate-machinetype", Severity::kError, "42", Fix::kNone,
     "A module has two implementations for one machine type.",
     "Nobody could say which of the two is loaded on such a machine, so the whole load point is "
     "refused, on machines of every type.",
     R"(
<module id="codecs" name="codecs">
  <platformmodule machinetype="linux-x86" name="codecs-small"/>
  <platformmodule machinetype="linux-x86" name="codecs-old"/>
</module>
)",
     R"(
<module id="codecs" name="codecs">
  <platformmodule machinetype="linux-x86" name="codecs-small"/>
</module>
)"},
    {Rule::kDuplicateClass, "duplicate-class", Severity::kError, "42", Fix::kNone,
     "Two classes have one id and do not complete each other.",
     "Two records of one class are admitted only where one has a client side and no service side "
     "and the other a service side and no client side, and not both have an agent side. Everything "
     "else is taken for a mistake, and the whole load point is refused.",
     R"(
<module id="store" name="store"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40004"><clientside moduleref="store"/></class>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40004"><clientside moduleref="store"/></class>
)",
     R"(
<module id="store" name="store"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40004"><clientside moduleref="store"/></class>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40005"><clientside moduleref="store"/></class>
)"},
    {Rule::kSideMissing, "side-missing", Severity::kError, "42", Fix::kNone,
     "A class lacks the side that its affinity needs.",
     "App and generic classes need a client side, agent classes an agent side, service classes a "
     "client or a service side. A side counts only with a module.",
     R"(
<module id="thumbnails" name="thumbnails"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40003" commonname="Thumbnails">
  <agentside moduleref="thumbnails"/>
</class>
)",
     R"(
<module id="thumbnails" name="thumbnails"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40003" commonname="Thumbnails" affinity="agent">
  <agentside moduleref="thumbnails"/>
</class>
)"},
    {Rule::kModuleRole, "module-role", Severity::kError, "42", Fix::kNone,
     "A module is given two roles that exclude each other.",
     "A module belongs either to app classes, or to agent sides, or to generic and service "
     "classes; "
     "and it cannot be the client side of one service class and the service side of another, or of "
     "the same. Divide it, or declare the file a second time under another id.",
     R"(
<module id="tools" name="tools"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40002" affinity="app">
  <clientside moduleref="tools"/>
</class>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40003" affinity="generic">
  <clientside moduleref="tools"/>
</class>
)",
     R"(
<module id="tools" name="tools"/>
<module id="tools.generic" name="tools"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40002" affinity="app">
  <clientside moduleref="tools"/>
</class>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40003" affinity="generic">
  <clientside moduleref="tools.generic"/>
</class>
)"},
    {Rule::kModuleUnknown, "module-unknown", Severity::kError, "42", Fix::kSafe,
     "A side names a module that is not declared.",
     "Modules are declared in a manifest of the same load point; those of other load points do not "
     "count. Letter case makes a difference. Where a manifest cannot be read to its end this is "
     "not "
     "told, as the module may stand there.",
     R"(
<module id="ws.pixels" name="pixels"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40001"><clientside moduleref="ws.pixel"/></class>
)",
     R"(
<module id="ws.pixels" name="pixels"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40001"><clientside moduleref="ws.pixels"/></class>
)"},
    {Rule::kRunnableModuleUnknown, "runnable-module-unknown", Severity::kWarning, "", Fix::kOffered,
     "A runnable names a module that is not declared.",
     "The runnable is registered all the same, and whoever starts it finds no file. Name a module "
     "that a manifest declares.",
     R"(
<module id="ws.host" type="executable" name="workstation-host"/>
<runnable moduleref="ws.hosts"><app nameid="workbench"/></runnable>
)",
     R"(
<module id="ws.host" type="executable" name="workstation-host"/>
<runnable moduleref="ws.host"><app nameid="workbench"/></runnable>
)"},
    {Rule::kDuplicateService, "duplicate-service", Severity::kWarning, "", Fix::kNone,
     "Two services of a load point have one id.",
     "The later one takes the name, the version and the model of the earlier one over, and only "
     "one "
     "of them is found. Different load points may have services of one id.",
     R"(
<module id="ws.host" type="executable" name="workstation-host"/>
<runnable moduleref="ws.host">
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="ImageHost"/>
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="Spooler"/>
</runnable>
)",
     R"(
<module id="ws.host" type="executable" name="workstation-host"/>
<runnable moduleref="ws.host">
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="ImageHost"/>
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1003" commonname="Spooler"/>
</runnable>
)"},
    {Rule::kHostUnknown, "host-unknown", Severity::kWarning, "", Fix::kNone,
     "A class is never found by name, because the service that it names as its host is not there.",
     "A class with a common name is filed only when its host is a service of a runnable of the "
     "same "
     "load point. The host is named by \"xsid\", or by \"xsname\" with the least version in "
     "\"xsversion\"; a service side that names none is hosted by the service called GenLWSC. Where "
     "a class stands in two records, the common name and the host have to stand in the same one.",
     R"(
<module id="meter" name="meter"/>
<module id="ws.host" type="executable" name="workstation-host"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40007" affinity="service" commonname="LightMeter">
  <serviceside moduleref="meter" svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40107" xsname="Imagehost"/>
</class>
<runnable moduleref="ws.host">
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="ImageHost"/>
</runnable>
)",
     R"(
<module id="meter" name="meter"/>
<module id="ws.host" type="executable" name="workstation-host"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40007" affinity="service" commonname="LightMeter">
  <serviceside moduleref="meter" svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40107" xsname="ImageHost"/>
</class>
<runnable moduleref="ws.host">
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="ImageHost"/>
</runnable>
)"},
    {Rule::kClassHidden, "class-hidden", Severity::kWarning, "", Fix::kNone,
     "A class is never found by name, because another one answers in its place.",
     "Of the classes of one name the one with the newest hosting service answers, of equal "
     "versions "
     "the one that was filed last; those of the caller's own scope come before those without one. "
     "That a newer installation hides an older one may be what is wanted.",
     R"(
<module id="meter" name="meter"/>
<module id="meter2" name="meter2"/>
<module id="ws.host" type="executable" name="workstation-host"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40007" affinity="service" commonname="LightMeter">
  <serviceside moduleref="meter" svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40107" xsname="ImageHost"/>
</class>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40008" affinity="service" commonname="LightMeter">
  <serviceside moduleref="meter2" svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40108" xsname="ImageHost"/>
</class>
<runnable moduleref="ws.host">
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="ImageHost"/>
</runnable>
)",
     R"(
<module id="meter" name="meter"/>
<module id="meter2" name="meter2"/>
<module id="ws.host" type="executable" name="workstation-host"/>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40007" affinity="service" commonname="LightMeter">
  <serviceside moduleref="meter" svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40107" xsname="ImageHost"/>
</class>
<class id="2c9d0b1e-6f35-47a4-8a10-5be2f0c40008" affinity="service" commonname="SpotMeter">
  <serviceside moduleref="meter2" svcid="2c9d0b1e-6f35-47a4-8a10-5be2f0c40108" xsname="ImageHost"/>
</class>
<runnable moduleref="ws.host">
  <service id="7b1f64c0-52a8-4be1-9d3e-3a0c6f2d1001" commonname="ImageHost"/>
</runnable>
)"},
    {Rule::kPreloadNeverHolds, "preload-never-holds", Severity::kWarning, "", Fix::kNone,
     "A condition to preload can never hold.",
     "Only shared libraries are preloaded, and a condition has to say by whom: by anyone, by a "
     "program, by a client, or by a service that a manifest declares.",
     R"(
$ --loadpoint pack
== pack/modules.tmfx
<tarnmodulemanifest version="1">
  <module id="ws.host" type="executable" name="workstation-host">
    <preload by="anyone"/>
  </module>
</tarnmodulemanifest>
)",
     R"(
$ --loadpoint pack
== pack/modules.tmfx
<tarnmodulemanifest version="1">
  <module id="ws.journal" name="journal">
    <preload by="anyone"/>
  </module>
</tarnmodulemanifest>
)"},
    {Rule::kPreloadNotActedOn, "preload-not-acted-on", Severity::kWarning, "", Fix::kNone,
     "An installation asks for a preload, which only the process's own load point does.",
     "Conditions are held against the process once, when its own load point is read. Installations "
     "are added later, and their libraries are loaded when they are used.",
     R"(
<module id="ws.journal" name="journal">
  <preload by="anyone"/>
</module>
)",
     R"(
<module id="ws.journal" name="journal"/>
)"},
};

}  // namespace tarnmf::check

#endif  // CHECK_CATALOGUE_BATCH_RULES_H
