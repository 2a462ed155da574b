// SPDX-License-Identifier: Apache-2.0
/// @file
/// Interface classes. records.h has the rules for all records.
#ifndef TARNMF_INTF_CLASS_H
#define TARNMF_INTF_CLASS_H

#include "tarnmf/export.h"
#include "tarnmf/values.h"

#include "platform/types.h"
#include "platform/unique_id.h"

/// One side of an interface class; always part of an MfIntfClassT, which owns its string.
struct MfIntfSideT {
  char* moduleref = nullptr;  ///< id of the module that implements the side; null: no such side
  MfMultiplicityT multiplicity = kMfAlwaysNew;  ///< how many instances serve its users
  std::uint32_t flags = 0;                      ///< MfSideFlagT
};

/// An interface class: its ids, its names and the modules that implement its sides.
struct TARNMF_API MfIntfClassT {
  MfIntfClassT();
  MfIntfClassT(const MfIntfClassT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfIntfClassT& operator=(const MfIntfClassT& other);
  ~MfIntfClassT();

  /// By MfSideT: the class id; the id under which the service side is offered; not set by
  /// manifests.
  UniIdT ids[kMfSideCount] = {};
  char* commonname = nullptr;  ///< the name that queries find the class by
  std::uint16_t version = 0;   ///< 0 to 32767
  /// Version of the hosting service, asked of the service manager when the class is indexed.
  std::int16_t svcVersion = 0;
  /// The oldest version that the hosting service supports, asked likewise.
  std::int16_t svcMinVersion = 0;
  MfAffinityT affinity = kMfGenericClass;  ///< what the class belongs to
  UniIdT xsid = {};                     ///< the hosting service; resolved from xsname when indexed
  char* xsname = nullptr;               ///< common name of the hosting service
  std::int32_t xsversion = -1;          ///< least version of the hosting service; -1: not given
  MfIsolationT isolation = kMfRelaxed;  ///< asked of the hosting service
  MfManagedTypeT managedtype = kMfGeneric;  ///< who manages its life
  bool exposed = false;                     ///< the service side is found by its combined id
  char* displayname = nullptr;              ///< a name for people
  MfIntfSideT sides[kMfSideCount];          ///< by MfSideT
};

/// Whether the class has a side.
inline bool MfHasSide(const MfIntfClassT& record, MfSideT side) {
  return record.sides[side].moduleref != nullptr;
}

#endif  // TARNMF_INTF_CLASS_H
