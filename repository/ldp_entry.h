// The repository's record of one load point.
#ifndef REPOSITORY_LDP_ENTRY_H
#define REPOSITORY_LDP_ENTRY_H

#include "tarnmf/dispose.h"
#include "tarnmf/ldp_data.h"
#include "tarnmf/publisher.h"

#include "platform/unique_id.h"
#include "support/owned.h"

namespace tarnmf {

struct MfLdpEntryT {
  explicit MfLdpEntryT(const UniIdT& loadpointId) : id(loadpointId) {}
  // The publisher points into the data, so it goes first.
  ~MfLdpEntryT() { publisher.reset(); }

  DisposePtr<liMfPublisher> publisher;  // null until the record is filed
  UniIdT id;
  MfLdpDataT data;  // with the path of the load point, and everything its manifests declare

  // The record filed before this one. The indexes lose sight of a record that another one replaces;
  // this chain does not.
  MfLdpEntryT* filedBefore = nullptr;
};

}  // namespace tarnmf

#endif  // REPOSITORY_LDP_ENTRY_H
