// SPDX-License-Identifier: Apache-2.0
// A code that keeps the order of names: of two in the order of their bytes the first never has the
// higher code.
#ifndef REPOSITORY_NAME_CODE_H
#define REPOSITORY_NAME_CODE_H

#include <cstdint>

#include "repository/character_places.h"
#include "repository/name_prefixes.h"
#include "support/growable_array.h"

namespace tarnmf {

// Each character takes six bits at first. When the code has learnt from names which characters follow
// which, words take about three bits a character, so that a code tells more of a name.
class NameCode {
 public:
  using Code = std::uint64_t;

  // Of the characters after a name's prefix: a number of so many bits.
  Code Of(const char* rest, unsigned bits) const {
    return successors_.Empty() ? PlainCode(rest, bits) : LearntCode(rest, bits);
  }

  // Learns from some of the names when there are so many of them that they pay for what is kept.
  // Without memory for it the code stays as it is.
  void Learn(const SortedNames& names, const NamePrefixes& prefixes);

 private:
  static constexpr int kPlaces = 1 << kBitsOfPlace;
  static constexpr std::int32_t kSuccessors = kPlaces * kPlaces;

  static std::int32_t SuccessorOf(CharacterPlace last, CharacterPlace next) {
    return static_cast<std::int32_t>(last.Number() << kBitsOfPlace | next.Number());
  }

  // The range of codes of names that go on with one character, as shares of the range before it.
  struct Share {
    std::uint16_t before;  // of the characters with a lower place
    std::uint16_t own;
  };

  // Short names are filled up with zeros.
  static Code PlainCode(const char* rest, unsigned bits) {
    Code code = 0;
    for (unsigned left = bits / kBitsOfPlace; left > 0; --left) {
      const CharacterPlace place = kCharacterPlaces[*rest++];
      code = code << kBitsOfPlace | place.Number();
      if (place.EndsOrder()) {
        code <<= kBitsOfPlace * (left - 1);
        break;
      }
    }
    return code << bits % kBitsOfPlace;
  }
  Code LearntCode(const char* rest, unsigned bits) const;

  GrowableArray<Share, kSuccessors> successors_;  // for each place its successors
};

}  // namespace tarnmf

#endif  // REPOSITORY_NAME_CODE_H
