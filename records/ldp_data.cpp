// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/ldp_data.h"

#include "records/release.h"

using tarnmf::ReleaseRecords;
using tarnmf::Take;

MfLdpDataT::MfLdpDataT() = default;
MfLdpDataT& MfLdpDataT::operator=(const MfLdpDataT& other) = default;
MfLdpDataT::~MfLdpDataT() {
  const MfListT<MfIntfClassT> takenClasses = Take(classes);
  const MfListT<MfModuleT> takenModules = Take(modules);
  const MfListT<MfRunnableT> takenRunnables = Take(runnables);
  tarnmf::ReleaseText(loadpoint);
  ReleaseRecords(takenClasses);
  ReleaseRecords(takenModules);
  ReleaseRecords(takenRunnables);
}
