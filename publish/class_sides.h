// The sides of an interface class.
#ifndef PUBLISH_CLASS_SIDES_H
#define PUBLISH_CLASS_SIDES_H

#include "tarnmf/intf_class.h"

namespace tarnmf {

inline bool HasSide(const MfIntfClassT& record, MfSideT side) {
  return record.sides[side].moduleref != nullptr;
}

}  // namespace tarnmf

#endif  // PUBLISH_CLASS_SIDES_H
