// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/module.h"

#include "records/release.h"

using tarnmf::ReleaseRecords;
using tarnmf::ReleaseText;
using tarnmf::Take;

MfPreloadInfoT::MfPreloadInfoT() = default;
MfPreloadInfoT& MfPreloadInfoT::operator=(const MfPreloadInfoT& other) = default;
MfPreloadInfoT::~MfPreloadInfoT() {
  ReleaseText(name);
}

MfModuleImplT::MfModuleImplT() = default;
MfModuleImplT& MfModuleImplT::operator=(const MfModuleImplT& other) = default;
MfModuleImplT::~MfModuleImplT() {
  const MfListT<MfPreloadInfoT> takenPreloads = Take(preloads);
  ReleaseText(machinetype);
  ReleaseText(name, flags, kMfImplOwnsName);
  ReleaseText(path, flags, kMfImplOwnsPath);
  ReleaseText(resolvedPath);
  ReleaseRecords(takenPreloads);
}

MfModuleT::MfModuleT() = default;
MfModuleT& MfModuleT::operator=(const MfModuleT& other) = default;
MfModuleT::~MfModuleT() {
  const MfListT<MfModuleImplT> takenImpls = Take(impls);
  ReleaseText(id);
  ReleaseText(type);
  ReleaseText(loadpoint, flags, kMfModuleOwnsLoadpoint);
  ReleaseRecords(takenImpls);
}
