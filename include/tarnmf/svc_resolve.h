// SPDX-License-Identifier: Apache-2.0
/// @file
/// The entries that the repository answers class and service queries with.
#ifndef TARNMF_SVC_RESOLVE_H
#define TARNMF_SVC_RESOLVE_H

#include "tarnmf/export.h"
#include "tarnmf/intf_class.h"
#include "tarnmf/values.h"

#include "platform/types.h"
#include "platform/unique_id.h"

/// Indexes of MfSvcResolveT::ids.
enum MfResolveIdT : std::int32_t {
  kMfCombinedId =
      0,             ///< service entries: combination of load-point id and service id, else null id
  kMfServiceId = 1,  ///< service entries: the service id, else null id
  kMfLoadpointId = 2,  ///< the load point that the entry came from
  kMfScopeId = 3,      ///< the installation's scope; null id: none
};

/// One entry of the class or service index. It owns nothing: what it points to lives as long as the
/// repository.
struct MfSvcResolveT {
  /// Copies field by field.
  TARNMF_API MfSvcResolveT& operator=(const MfSvcResolveT& other);
  /// Copies field by field, too: `other` stays as it was.
  TARNMF_API MfSvcResolveT& operator=(MfSvcResolveT&& other);

  MfResolveKindT kind = kMfClassEntry;          ///< of a class, or of a service role
  const char* key = nullptr;                    ///< the common name that the entry is filed under
  UniIdT ids[4] = {};                           ///< by MfResolveIdT
  MfMultiplicityT multiplicity = kMfAlwaysNew;  ///< of the service side, or of the role
  std::int16_t versionKey = 0;     ///< twice the service version; orders the entries of one name
  std::uint16_t reserved = 0;      ///< reserved
  MfIntfClassT* record = nullptr;  ///< the class, or null for an entry of a service role
};

#endif  // TARNMF_SVC_RESOLVE_H
