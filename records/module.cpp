#include "tarnmf/module.h"

#include "records/release.h"

using tarnmf::ReleaseText;
using tarnmf::TakenListT;

MfPreloadInfoT::MfPreloadInfoT() = default;
MfPreloadInfoT& MfPreloadInfoT::operator=(const MfPreloadInfoT& other) = default;
MfPreloadInfoT::~MfPreloadInfoT() {
  ReleaseText(name);
}

MfModuleImplT::MfModuleImplT() = default;
MfModuleImplT& MfModuleImplT::operator=(const MfModuleImplT& other) = default;
MfModuleImplT::~MfModuleImplT() {
  TakenListT<MfPreloadInfoT> takenPreloads(preloads);
  ReleaseText(machinetype);
  ReleaseText(name, flags, kMfImplOwnsName);
  ReleaseText(path, flags, kMfImplOwnsPath);
  ReleaseText(resolvedPath);
}

MfModuleT::MfModuleT() = default;
MfModuleT& MfModuleT::operator=(const MfModuleT& other) = default;
MfModuleT::~MfModuleT() {
  TakenListT<MfModuleImplT> takenImpls(impls);
  ReleaseText(id);
  ReleaseText(type);
  ReleaseText(loadpoint, flags, kMfModuleOwnsLoadpoint);
}
