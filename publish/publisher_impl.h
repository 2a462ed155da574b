// SPDX-License-Identifier: Apache-2.0
// The publisher.
#ifndef PUBLISH_PUBLISHER_IMPL_H
#define PUBLISH_PUBLISHER_IMPL_H

#include "tarnmf/publisher.h"

#include "publish/publish_index.h"

namespace tarnmf {

class liMfPublisherImpl final : public liMfPublisher {
 public:
  explicit liMfPublisherImpl(IntfDispositionT view) : disposition(view) {}

  BtkErrorT Add(MfIntfClassT** classes, std::int32_t classCount, MfModuleT** modules,
                std::int32_t moduleCount, MfRunnableT** runnables,
                std::int32_t runnableCount) override;
  BtkErrorT Publish(bool registerInterfaces) override;

  // Open to this folder and its tests. The records in all of them are the caller's.
  const IntfDispositionT disposition;
  NewModules newModules;      // not resolved yet
  NewRunnables newRunnables;  // not registered yet
  NewClasses newClasses;      // not registered yet
  PublishIndexT batch;        // of the Add call in progress; empty between calls
  PublishIndexT merged;       // of everything accepted

 private:
  BtkErrorT AddBatch(const MfListT<MfIntfClassT>& classes, const MfListT<MfModuleT>& modules,
                     const MfListT<MfRunnableT>& runnables);
};

}  // namespace tarnmf

#endif  // PUBLISH_PUBLISHER_IMPL_H
