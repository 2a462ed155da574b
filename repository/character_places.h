// SPDX-License-Identifier: Apache-2.0
// Characters in six bits.
#ifndef REPOSITORY_CHARACTER_PLACES_H
#define REPOSITORY_CHARACTER_PLACES_H

#include <cstdint>

namespace tarnmf {

constexpr unsigned kBitsOfPlace = 6;

// A number below 64, and whether other characters have it too, so that what follows them says nothing
// of their order; the end of a name counts as such a one.
class CharacterPlace {
 public:
  constexpr CharacterPlace() = default;
  constexpr CharacterPlace(std::uint8_t number, bool endsOrder)
      : bits_(static_cast<std::uint8_t>(endsOrder ? number | kEndsOrder : number)) {}

  constexpr unsigned Number() const { return bits_ & (kEndsOrder - 1U); }
  constexpr bool EndsOrder() const { return bits_ >= kEndsOrder; }

 private:
  static constexpr std::uint8_t kEndsOrder = 1 << kBitsOfPlace;

  std::uint8_t bits_ = 0;
};

// A character's place among those that make names. All others have the place of the next one that
// does, and those after the letters one of their own. Since there are too many by two, Y and Z have
// the place of the underscore.
class CharacterPlaces {
 public:
  constexpr CharacterPlaces() {
    std::uint8_t place = 1;
    for (int character = 1; character < 256; ++character) {
      const bool isOwn = character == '.' || (character >= '0' && character <= '9') ||
                         (character >= 'A' && character <= 'X') || character == '_' ||
                         (character >= 'a' && character <= 'z');
      places_[character] = CharacterPlace(place, !isOwn);
      if (isOwn) ++place;
    }
  }

  constexpr CharacterPlace operator[](char character) const {
    return places_[static_cast<unsigned char>(character)];
  }

 private:
  CharacterPlace places_[256] = {CharacterPlace(0, true)};
};

inline constexpr CharacterPlaces kCharacterPlaces;
static_assert(kCharacterPlaces['\xff'].Number() == (1 << kBitsOfPlace) - 1);

}  // namespace tarnmf

#endif  // REPOSITORY_CHARACTER_PLACES_H
