// SPDX-License-Identifier: Apache-2.0
/// @file
/// The container of one load point's records. records.h has the rules for all records.
#ifndef TARNMF_LDP_DATA_H
#define TARNMF_LDP_DATA_H

#include "tarnmf/export.h"
#include "tarnmf/intf_class.h"
#include "tarnmf/list.h"
#include "tarnmf/module.h"
#include "tarnmf/runnable.h"

#include "platform/types.h"

/// Everything that the manifests of one load point declare.
struct TARNMF_API MfLdpDataT {
  MfLdpDataT();
  MfLdpDataT(const MfLdpDataT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfLdpDataT& operator=(const MfLdpDataT& other);
  ~MfLdpDataT();

  btkWChar* loadpoint = nullptr;   ///< path of the load point; modules and runnables may borrow it
  MfListT<MfIntfClassT> classes;   ///< in document order, file after file
  MfListT<MfModuleT> modules;      ///< likewise; nested ones included
  MfListT<MfRunnableT> runnables;  ///< likewise
};

#endif  // TARNMF_LDP_DATA_H
