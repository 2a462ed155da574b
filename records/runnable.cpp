// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/runnable.h"

#include "records/release.h"

using tarnmf::ReleaseCommands;
using tarnmf::ReleaseRecords;
using tarnmf::ReleaseStrings;
using tarnmf::ReleaseText;
using tarnmf::Take;

MfRunRoleBaseT::MfRunRoleBaseT() = default;
MfRunRoleBaseT& MfRunRoleBaseT::operator=(const MfRunRoleBaseT& other) = default;
MfRunRoleBaseT::~MfRunRoleBaseT() {
  ReleaseText(launcher);
  ReleaseCommands(env);
  ReleaseStrings(args);
}

MfAppRoleT::MfAppRoleT() = default;
MfAppRoleT& MfAppRoleT::operator=(const MfAppRoleT& other) = default;
MfAppRoleT::~MfAppRoleT() {
  ReleaseText(nameid);
  ReleaseText(reservedText);
}

MfLauncherRoleT::MfLauncherRoleT() = default;
MfLauncherRoleT& MfLauncherRoleT::operator=(const MfLauncherRoleT& other) = default;
MfLauncherRoleT::~MfLauncherRoleT() {
  ReleaseStrings(types);
}

MfServiceRoleT::MfServiceRoleT() = default;
MfServiceRoleT& MfServiceRoleT::operator=(const MfServiceRoleT& other) = default;
MfServiceRoleT::~MfServiceRoleT() {
  ReleaseText(commonname);
  ReleaseText(url);
}

MfRunnableT::MfRunnableT() = default;
MfRunnableT& MfRunnableT::operator=(const MfRunnableT& other) = default;
MfRunnableT::~MfRunnableT() {
  ReleaseText(moduleref);
  const MfListT<MfLauncherRoleT> takenLaunchers = Take(launchers);
  const MfListT<MfAppRoleT> takenApps = Take(apps);
  const MfListT<MfServiceRoleT> takenServices = Take(services);
  ReleaseText(loadpoint, flags, kMfRunnableOwnsLoadpoint);
  ReleaseRecords(takenServices);
  ReleaseRecords(takenApps);
  ReleaseRecords(takenLaunchers);
}
