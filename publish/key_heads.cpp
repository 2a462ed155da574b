// SPDX-License-Identifier: Apache-2.0
#include "publish/key_heads.h"

#include <array>
#include <bit>
#include <cstring>

#include "publish/fetch_ahead.h"

namespace tarnmf {
namespace {

constexpr int kHeadBytes = sizeof(std::uint64_t);

std::size_t CommonLength(const char* left, const char* right, std::size_t limit) {
  std::size_t length = 0;
  while (length < limit && left[length] == right[length])
    ++length;
  return length;
}

std::uint64_t HeadOf(const char* text) {
  std::uint64_t head = 0;
  for (int left = kHeadBytes; left > 0 && *text != '\0'; --left, ++text)
    head |= std::uint64_t{static_cast<unsigned char>(*text)} << 8 * (left - 1);
  return head;
}

}  // namespace

// ---- Module ids --------------------------------------------------------------------------------

void TextHeads::Fit(const MfListT<MfModuleT>& modules) {
  prefix_ = modules[0]->id;
  prefixLength_ = prefix_ != nullptr ? std::strlen(prefix_) : 0;
  for (std::int32_t i = 1; i < modules.count; ++i) {
    FetchAhead(modules, modules.count, i, FetchKey);
    const char* const id = modules[i]->id;
    prefixLength_ = id != nullptr ? CommonLength(prefix_, id, prefixLength_) : 0;
  }
}

std::uint64_t TextHeads::Of(const MfModuleT& module) const {
  return module.id != nullptr ? HeadOf(module.id + prefixLength_) : 0;
}

bool TextHeads::CouldHold(const char* id, std::uint64_t& head) const {
  if (CommonLength(prefix_, id, prefixLength_) < prefixLength_) return false;
  head = HeadOf(id + prefixLength_);
  return true;
}

// ---- Class ids ---------------------------------------------------------------------------------

void IdHeads::Fit(const MfListT<MfIntfClassT>& classes) {
  using Words = std::array<std::uint64_t, 2>;
  const auto words = [&](std::int32_t i) {
    return std::bit_cast<Words>(classes[i]->ids[kMfClientSide]);
  };
  const Words first = words(0);
  Words differences{};
  for (std::int32_t i = 1; i < classes.count; ++i) {
    FetchAhead(classes, classes.count, i, FetchKey);
    const Words id = words(i);
    differences[0] |= id[0] ^ first[0];
    differences[1] |= id[1] ^ first[1];
  }
  const auto differing = std::bit_cast<UniIdT>(differences);
  for (std::uint8_t i = 0; i < sizeof(UniIdT) && placeCount_ < kHeadBytes; ++i) {
    if (differing.bytes[i] != 0) places_[placeCount_++] = i;
  }
}

std::uint64_t IdHeads::Of(const MfIntfClassT& record) const {
  std::uint64_t head = 0;
  for (std::int32_t i = 0; i < placeCount_; ++i)
    head = head << 8 | record.ids[kMfClientSide].bytes[places_[i]];
  return head;
}

}  // namespace tarnmf
