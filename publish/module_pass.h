// Checks the modules of a batch and chooses their implementations.
#ifndef PUBLISH_MODULE_PASS_H
#define PUBLISH_MODULE_PASS_H

#include "tarnmf/list.h"

#include "publish/publish_index.h"

namespace tarnmf {

// Files `modules` in `batch` and sets each one's selected implementation. False: a module is
// refused or memory could not be had; `batch` then holds the modules before it.
[[nodiscard]] bool RunModulePass(const MfListT<MfModuleT>& modules, PublishIndexT& batch,
                                 const PublishIndexT& merged);

}  // namespace tarnmf

#endif  // PUBLISH_MODULE_PASS_H
