// Interface classes. records.h has the rules for all records.
#ifndef TARNMF_INTF_CLASS_H
#define TARNMF_INTF_CLASS_H

#include "tarnmf/export.h"
#include "tarnmf/values.h"

#include "platform/types.h"
#include "platform/unique_id.h"

// One side of an interface class; always part of an MfIntfClassT, which owns its string.
struct MfIntfSideT {
  char* moduleref = nullptr;  // id of the module that implements the side; null: no such side
  MfMultiplicityT multiplicity = kMfAlwaysNew;
  std::uint32_t flags = 0;  // MfSideFlagT
};

struct TARNMF_API MfIntfClassT {
  MfIntfClassT();
  MfIntfClassT(const MfIntfClassT&) = delete;
  MfIntfClassT& operator=(const MfIntfClassT& other);
  ~MfIntfClassT();

  // By side: the class id; the id under which the service side is offered; not set by manifests.
  UniIdT ids[kMfSideCount] = {};
  char* commonname = nullptr;
  std::uint16_t version = 0;       // 0 to 32767
  std::int16_t svcVersion = 0;     // both versions are asked of the service manager
  std::int16_t svcMinVersion = 0;  // when the class is indexed
  MfAffinityT affinity = kMfGenericClass;
  UniIdT xsid = {};  // the hosting service; resolved from xsname when the class is indexed
  char* xsname = nullptr;
  std::int32_t xsversion = -1;
  MfIsolationT isolation = kMfRelaxed;
  MfManagedTypeT managedtype = kMfGeneric;
  bool exposed = false;
  char* displayname = nullptr;
  MfIntfSideT sides[kMfSideCount];
};

// Whether the class has a side.
inline bool MfHasSide(const MfIntfClassT& record, MfSideT side) {
  return record.sides[side].moduleref != nullptr;
}

#endif  // TARNMF_INTF_CLASS_H
