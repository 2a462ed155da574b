// SPDX-License-Identifier: Apache-2.0
// The words that attribute values may be, with the numbers that records hold for them.
#ifndef GRAMMAR_WORDS_H
#define GRAMMAR_WORDS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "tarnmf/values.h"

#include "platform/env_command.h"

namespace tarnmf::grammar {

struct Word {
  const char* text;
  std::int32_t number;
};

// The words of one kind of value; they are matched whatever the letter case.
struct Words {
  static constexpr std::size_t kLargestBuffer = 16;

  template <std::size_t Count>
  consteval Words(const Word (&words)[Count]) : list(words) {
    std::size_t longest = 0;
    for (const Word& word : words)
      longest = std::max(longest, std::string_view(word.text).size());
    bufferSize = longest + 1;
    if (bufferSize > kLargestBuffer) throw "a word is longer than readers have room for";
  }

  std::span<const Word> list;
  std::size_t bufferSize = 0;  // bytes that a value may take, its NUL included
};

inline constexpr Word kBooleanRows[] = {
    {"yes", 1},
    {"true", 1},
    {"no", 0},
    {"false", 0},
};
inline constexpr Words kBooleanWords(kBooleanRows);

inline constexpr Word kAffinityRows[] = {
    {"generic", kMfGenericClass},
    {"app", kMfAppClass},
    {"agent", kMfAgentClass},
    {"service", kMfServiceClass},
};
inline constexpr Words kAffinityWords(kAffinityRows);

inline constexpr Word kPreloadByRows[] = {
    {"anyone", kMfByAnyone},
    {"executable", kMfByExecutable},
    {"service", kMfByService},
    {"client", kMfByClient},
};
inline constexpr Words kPreloadByWords(kPreloadByRows);

inline constexpr Word kInitStateRows[] = {
    {"default", kMfInitDefault},
    {"clean", kMfInitClean},
    {"inprocess", kMfInitInProcess},
};
inline constexpr Words kInitStateWords(kInitStateRows);

inline constexpr Word kCsimRows[] = {
    {"opaque", kMfOpaque},
    {"classBased", kMfClassBased},
};
inline constexpr Words kCsimWords(kCsimRows);

inline constexpr Word kModelRows[] = {
    {"spawnOnly", kMfSpawnOnly},
    {"managed", kMfManaged},
};
inline constexpr Words kModelWords(kModelRows);

inline constexpr Word kIsolationRows[] = {
    {"relaxed", kMfRelaxed},
    {"strict", kMfStrict},
};
inline constexpr Words kIsolationWords(kIsolationRows);

inline constexpr Word kManagedTypeRows[] = {
    {"generic", kMfGeneric},
    {"container", kMfContainer},
    {"worker", kMfWorker},
};
inline constexpr Words kManagedTypeWords(kManagedTypeRows);

inline constexpr Word kMultiplicityRows[] = {
    {"alwaysNew", kMfAlwaysNew},
    {"singleInstance", kMfSingleInstance},
    {"perProcess", kMfPerProcess},
    {"perLdp", kMfPerLdp},
};
inline constexpr Words kMultiplicityWords(kMultiplicityRows);

inline constexpr Word kRestrictToRows[] = {
    {"create", kEnvCmdCreate},
    {"override", kEnvCmdOverride},
};
inline constexpr Words kRestrictToWords(kRestrictToRows);

}  // namespace tarnmf::grammar

#endif  // GRAMMAR_WORDS_H
