// SPDX-License-Identifier: Apache-2.0
/// @file
/// Modules, their implementations and preload conditions. records.h has the rules for all records.
#ifndef TARNMF_MODULE_H
#define TARNMF_MODULE_H

#include "tarnmf/export.h"
#include "tarnmf/list.h"
#include "tarnmf/values.h"

#include "platform/types.h"
#include "platform/unique_id.h"

/// A condition under which an implementation is loaded ahead of use.
struct TARNMF_API MfPreloadInfoT {
  MfPreloadInfoT();
  MfPreloadInfoT(const MfPreloadInfoT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfPreloadInfoT& operator=(const MfPreloadInfoT& other);
  ~MfPreloadInfoT();

  MfPreloadByT by = kMfByNone;  ///< who triggers it
  btkWChar* name = nullptr;     ///< the name tested, e.g. the executable's file name
  UniIdT svcid = {};            ///< the service that triggers it; null id: every service
  UniIdT optionid = {};         ///< the switch that gates the preload; null id: none
};

/// One implementation of a module: one file for one kind of machine.
struct TARNMF_API MfModuleImplT {
  MfModuleImplT();
  MfModuleImplT(const MfModuleImplT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfModuleImplT& operator=(const MfModuleImplT& other);
  ~MfModuleImplT();

  char* machinetype = nullptr;       ///< null: the implementation that the module itself describes
  std::int32_t abits = 0;            ///< address bits of the file: 32, 64 or 0 (not given)
  btkWChar* name = nullptr;          ///< owned when flags has kMfImplOwnsName
  btkWChar* path = nullptr;          ///< owned when flags has kMfImplOwnsPath
  std::int32_t apilevel = 0;         ///< handed to the dynamic-library manager
  std::uint32_t version[4] = {};     ///< handed to the dynamic-library manager
  std::uint32_t flags = 0;           ///< MfImplFlagT
  std::int32_t reserved = 0;         ///< reserved
  char* resolvedPath = nullptr;      ///< full path of the file; set by the publisher
  MfListT<MfPreloadInfoT> preloads;  ///< in document order
};

/// A module: a shared library or another file, with one implementation or more.
struct TARNMF_API MfModuleT {
  MfModuleT();
  MfModuleT(const MfModuleT&) = delete;
  /// Copies the fields as they stand; see records.h.
  MfModuleT& operator=(const MfModuleT& other);
  ~MfModuleT();

  std::int32_t reserved = 0;              ///< reserved
  char* id = nullptr;                     ///< unique within a publisher
  char* type = nullptr;                   ///< null: "sharedLib"
  btkWChar* loadpoint = nullptr;          ///< owned when flags has kMfModuleOwnsLoadpoint
  std::uint32_t flags = 0;                ///< MfModuleFlagT
  MfListT<MfModuleImplT> impls;           ///< the module's own first, then one per machine type
  MfModuleImplT* selectedImpl = nullptr;  ///< points into impls; set by the publisher
};

#endif  // TARNMF_MODULE_H
