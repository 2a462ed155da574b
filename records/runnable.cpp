#include "tarnmf/runnable.h"

#include "records/release.h"

using tarnmf::ReleaseStrings;
using tarnmf::ReleaseText;
using tarnmf::TakenListT;

MfRunRoleBaseT::MfRunRoleBaseT() = default;
MfRunRoleBaseT& MfRunRoleBaseT::operator=(const MfRunRoleBaseT& other) = default;
MfRunRoleBaseT::~MfRunRoleBaseT() {
  ReleaseText(launcher);
  btkEnvCmdRelease(env.items, env.count);
  btkFree(env.items);
  env = {};
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
  // Ends in the reverse order: the services first, the launchers last.
  TakenListT<MfLauncherRoleT> takenLaunchers(launchers);
  TakenListT<MfAppRoleT> takenApps(apps);
  TakenListT<MfServiceRoleT> takenServices(services);
  ReleaseText(loadpoint, flags, kMfRunnableOwnsLoadpoint);
}
