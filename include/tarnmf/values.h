// SPDX-License-Identifier: Apache-2.0
/// @file
/// The numbers that record fields hold: enumerations and flag bits.
#ifndef TARNMF_VALUES_H
#define TARNMF_VALUES_H

#include <cstdint>

/// Who triggers a preload.
enum MfPreloadByT : std::int32_t {
  kMfByNone = 0,
  kMfByAnyone = 1,
  kMfByExecutable = 2,
  kMfByService = 3,
  kMfByClient = 4,
};

/// What an interface class belongs to.
enum MfAffinityT : std::int32_t {
  kMfGenericClass = 0,
  kMfAppClass = 1,
  kMfAgentClass = 2,
  kMfServiceClass = 3,
};

/// The isolation that a service side asks of its hosting service.
enum MfIsolationT : std::int32_t { kMfRelaxed = 0, kMfStrict = 1 };

/// Who manages the life of a class or service.
enum MfManagedTypeT : std::int32_t { kMfGeneric = 0, kMfContainer = 1, kMfWorker = 2 };

/// How many instances of a class or service there are.
enum MfMultiplicityT : std::int32_t {
  kMfAlwaysNew = 0,
  kMfSingleInstance = 1,
  kMfPerProcess = 2,
  kMfPerLdp = 3,
};

/// The environment that a role starts from.
enum MfInitStateT : std::int32_t { kMfInitDefault = 0, kMfInitClean = 1, kMfInitInProcess = 2 };

/// Whether the platform only spawns a service or manages it.
enum MfServiceModelT : std::int32_t { kMfSpawnOnly = 0, kMfManaged = 1 };

/// What the platform knows of a service's implementation.
enum MfCsimT : std::int32_t { kMfOpaque = 0, kMfClassBased = 1 };

/// The sides of an interface class, as indexes of its arrays.
enum MfSideT : std::int32_t { kMfClientSide = 0, kMfServiceSide = 1, kMfAgentSide = 2 };
/// The number of sides.
inline constexpr std::int32_t kMfSideCount = 3;

/// Bits of MfModuleT::flags.
enum MfModuleFlagT : std::uint32_t {
  kMfModulePrivate = 0x1,
  kMfModuleGeneratedId = 0x2,
  kMfModuleOwnsLoadpoint = 0x4,
};

/// Bits of MfModuleImplT::flags.
enum MfImplFlagT : std::uint32_t {
  kMfImplForcePath = 0x1,
  kMfImplExplicitName = 0x2,
  kMfImplOwnsPath = 0x4,
  kMfImplOwnsName = 0x8,
};

/// Bits of MfIntfSideT::flags.
enum MfSideFlagT : std::uint32_t { kMfSideMultiplicityGiven = 0x1 };

/// Bits of MfRunnableT::flags.
enum MfRunnableFlagT : std::uint32_t { kMfRunnableOwnsLoadpoint = 0x1 };

/// Values of MfSvcResolveT::kind.
enum MfResolveKindT : std::int32_t { kMfClassEntry = 0, kMfServiceEntry = 1 };

#endif  // TARNMF_VALUES_H
