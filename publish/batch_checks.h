// SPDX-License-Identifier: Apache-2.0
// Checks the modules and classes of a batch against each other and against what was accepted before.
#ifndef PUBLISH_BATCH_CHECKS_H
#define PUBLISH_BATCH_CHECKS_H

#include "tarnmf/list.h"

#include "publish/publish_index.h"
#include "publish/refusal.h"

namespace tarnmf {

// Files the records in `batch`; `merged` holds those of earlier batches. Chooses the implementation
// of each module and moves the sides of a class that completes one accepted before into that one;
// for the records before a refused one both stays done. After a refusal the elements of `batch` mean
// nothing and have to be forgotten.
// REQUIRES: `batch` is empty.
Refusal CheckBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes,
                   PublishIndexT& batch, const PublishIndexT& merged);

// The same for records that are the first ones of a publisher.
Refusal CheckFirstBatch(const MfListT<MfModuleT>& modules, const MfListT<MfIntfClassT>& classes);

}  // namespace tarnmf

#endif  // PUBLISH_BATCH_CHECKS_H
