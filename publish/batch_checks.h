// Checks the modules and classes of a batch against each other and against what was accepted before.
#ifndef PUBLISH_BATCH_CHECKS_H
#define PUBLISH_BATCH_CHECKS_H

#include "tarnmf/list.h"

#include "publish/publish_index.h"
#include "publish/refusal.h"

namespace tarnmf {

// Files the records in `batch`, those of earlier batches being in `merged`. Chooses the
// implementation of each module and moves the sides of a class that completes one accepted before
// into that one; both stays done for the records before a refused one. After a refusal `batch`
// holds no more than room that can be used again: its elements have to be forgotten.
// REQUIRES: `batch` is empty.
Refusal CheckBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes,
                   PublishIndexT& batch, const PublishIndexT& merged);

// The same for records that are the first ones of a publisher.
Refusal CheckFirstBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes);

}  // namespace tarnmf

#endif  // PUBLISH_BATCH_CHECKS_H
