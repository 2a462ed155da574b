// SPDX-License-Identifier: Apache-2.0
// A document that uses every element and attribute of the grammar.
#ifndef TESTS_SUPPORT_EVERYTHING_H
#define TESTS_SUPPORT_EVERYTHING_H

namespace tarnmf::test {

inline constexpr char kEverything[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<tarnmanifest version="1">
  <modules>
    <module id="core" type="sharedLib" name="core" explicitname="no" path="lib" forcepath="no"
            description="all of it" apilevel="2" version="1" private="no" abits="64">
      <preload by="executable" name="viewer" optionid="0a0a0a0a-0000-0000-0000-000000000001"/>
      <preload by="service" svcid="0b0b0b0b000000000000000000000001"/>
      <platformmodule machinetype="linux-x64" name="core64" explicitname="yes" path="x"
                      forcepath="yes" apilevel="3" version="2"><preload by="anyone"/></platformmodule>
      <platformmodule machinetype="linux-x86" path="y"/>
    </module>
    <module id="server" name="server" loadpoint="/elsewhere"/>
    <module id="starter" type="executable" name="starter" path=""/>
  </modules>
  <classes>
    <class id="0c0c0c0c-0000-0000-0000-000000000001" affinity="service" commonname="Render"
           displayname="Rendering" version="3" createon="demand" managedtype="generic">
      <clientside moduleref="core" multiplicity="perProcess"/>
      <agentside multiplicity="alwaysNew"><module name="renderagent"/></agentside>
      <serviceside moduleref="server" svcid="0c0c0c0c-0000-0000-0000-000000000002"
                   multiplicity="perLdp" exposed="yes" xsid="0d0d0d0d-0000-0000-0000-000000000001"
                   isolation="strict"/>
    </class>
    <class id="0c0c0c0c-0000-0000-0000-000000000003" affinity="service" commonname="Work"
           managedtype="worker">
      <serviceside xsname="RenderHost" xsversion="2"><module id="worker" name="worker"/></serviceside>
    </class>
  </classes>
  <runnables>
    <runnable moduleref="starter">
      <service id="0d0d0d0d-0000-0000-0000-000000000001" model="managed" commonname="RenderHost"
               version="4" launcher="std" csim="classBased" managedtype="container"
               multiplicity="singleInstance" recover="yes" exposed="yes" port="80" url="host">
        <args><arg>-a "b c"</arg><arg precomposed="yes">d e</arg><arg/></args>
        <env initstate="clean"><set name="A" restrictto="create">1</set><unset name="B"/>
          <append name="C">2</append><prepend name="D" restrictto="override">3</prepend>
          <set name="E">4</set></env>
      </service>
      <app nameid="viewer" launcher="std"><args/><args><arg>1 2 3 4 5</arg></args></app>
      <launcher nameid="std" types="exe;lib;script;task;tool"><env/></launcher>
    </runnable>
  </runnables>
</tarnmanifest>
)";

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_EVERYTHING_H
