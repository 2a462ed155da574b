// The null id, which stands for "none".
#ifndef REPOSITORY_NULL_ID_H
#define REPOSITORY_NULL_ID_H

#include "platform/unique_id.h"

namespace tarnmf {

inline constexpr UniIdT kNullId{};

inline bool IsNullId(const UniIdT& id) {
  return btkUniIdIsEqual(&id, &kNullId);
}

}  // namespace tarnmf

#endif  // REPOSITORY_NULL_ID_H
