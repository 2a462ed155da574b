// The words that attribute values may be, with the numbers that records hold for them.
#ifndef XML_KEYWORDS_H
#define XML_KEYWORDS_H

#include <cstddef>
#include <cstdint>
#include <span>

#include "tarnmf/values.h"

namespace tarnmf {

struct KeywordT {
  const char* word;
  std::int32_t number;
};

struct KeywordTableT {
  std::size_t bufferSize;  // bytes that a value may take, its NUL included
  std::span<const KeywordT> words;
};

inline constexpr KeywordT kAffinityWords[] = {
    {"generic", kMfGenericClass},
    {"app", kMfAppClass},
    {"agent", kMfAgentClass},
    {"service", kMfServiceClass},
};
inline constexpr KeywordTableT kAffinity = {8, kAffinityWords};

inline constexpr KeywordT kPreloadByWords[] = {
    {"anyone", kMfByAnyone},
    {"executable", kMfByExecutable},
    {"service", kMfByService},
    {"client", kMfByClient},
};
inline constexpr KeywordTableT kPreloadBy = {11, kPreloadByWords};

inline constexpr KeywordT kInitStateWords[] = {
    {"default", kMfInitDefault},
    {"clean", kMfInitClean},
    {"inprocess", kMfInitInProcess},
};
inline constexpr KeywordTableT kInitState = {10, kInitStateWords};

inline constexpr KeywordT kCsimWords[] = {
    {"opaque", kMfOpaque},
    {"classBased", kMfClassBased},
};
inline constexpr KeywordTableT kCsim = {11, kCsimWords};

inline constexpr KeywordT kModelWords[] = {
    {"spawnOnly", kMfSpawnOnly},
    {"managed", kMfManaged},
};
inline constexpr KeywordTableT kModel = {10, kModelWords};

inline constexpr KeywordT kIsolationWords[] = {
    {"relaxed", kMfRelaxed},
    {"strict", kMfStrict},
};
inline constexpr KeywordTableT kIsolation = {8, kIsolationWords};

inline constexpr KeywordT kManagedTypeWords[] = {
    {"generic", kMfGeneric},
    {"container", kMfContainer},
    {"worker", kMfWorker},
};
inline constexpr KeywordTableT kManagedType = {10, kManagedTypeWords};

inline constexpr KeywordT kMultiplicityWords[] = {
    {"alwaysNew", kMfAlwaysNew},
    {"singleInstance", kMfSingleInstance},
    {"perProcess", kMfPerProcess},
    {"perLdp", kMfPerLdp},
};
inline constexpr KeywordTableT kMultiplicity = {15, kMultiplicityWords};

}  // namespace tarnmf

#endif  // XML_KEYWORDS_H
