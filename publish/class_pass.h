// Checks the classes of a batch against its modules and against each other.
#ifndef PUBLISH_CLASS_PASS_H
#define PUBLISH_CLASS_PASS_H

#include "tarnmf/list.h"

#include "publish/publish_index.h"

namespace tarnmf {

// Files `classes` in `batch`, whose modules must have been filed before, and their modules under
// the roles that the classes give them. The sides of a record that completes one accepted before
// are moved into that one. False: a class is refused or memory could not be had; what was filed and
// moved before stays so.
[[nodiscard]] bool RunClassPass(const MfListT<MfIntfClassT>& classes, PublishIndexT& batch,
                                const PublishIndexT& merged);

}  // namespace tarnmf

#endif  // PUBLISH_CLASS_PASS_H
