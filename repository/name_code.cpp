// SPDX-License-Identifier: Apache-2.0
#include "repository/name_code.h"

#include <numeric>

namespace tarnmf {
namespace {

constexpr std::uint32_t kWhole = 1024;    // what the shares add up to
constexpr std::uint32_t kLeastShare = 2;  // so that a character that was never seen has one, too

}  // namespace

// Each character narrows the range of codes to its own share, as arithmetic coding does.
NameCode::Code NameCode::LearntCode(const char* rest, unsigned bits) const {
  Code code = 0;
  Code size = Code{1} << bits;
  CharacterPlace last{};
  while (size >= kWhole && !last.EndsOrder()) {
    const CharacterPlace place = kCharacterPlaces[*rest++];
    const Share share = successors_[SuccessorOf(last, place)];
    size /= kWhole;
    code += size * share.before;
    size *= share.own;
    last = place;
  }
  return code;
}

void NameCode::Learn(const SortedNames& names, const NamePrefixes& prefixes) {
  constexpr std::int32_t kEnough = 16'384;
  constexpr std::int32_t kSample = 4'096;
  if (names.count < kEnough || !successors_.Reserve(kSuccessors)) return;

  std::uint32_t counts[kSuccessors] = {};
  for (std::int32_t i = 0; i < names.count; i += names.count / kSample) {
    const char* rest = prefixes.SplitOf(names[i]).rest;
    for (CharacterPlace last{}; !last.EndsOrder();) {
      const CharacterPlace place = kCharacterPlaces[*rest++];
      ++counts[SuccessorOf(last, place)];
      last = place;
    }
  }

  successors_.Forget();
  for (const std::uint32_t* row = counts; row != counts + kSuccessors; row += kPlaces) {
    const std::uint64_t seen = std::accumulate(row, row + kPlaces, std::uint64_t{0});
    std::uint32_t before = 0;
    for (int place = 0; place < kPlaces; ++place) {
      constexpr std::uint32_t kShared = kWhole - kPlaces * kLeastShare;
      const auto own = static_cast<std::uint32_t>(
          kLeastShare + (seen > 0 ? kShared * std::uint64_t{row[place]} / seen : 0));
      successors_.AppendReserved(
          {static_cast<std::uint16_t>(before), static_cast<std::uint16_t>(own)});
      before += own;
    }
  }
}

}  // namespace tarnmf
