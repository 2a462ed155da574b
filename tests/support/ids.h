// Ids of tests.
#ifndef TESTS_SUPPORT_IDS_H
#define TESTS_SUPPORT_IDS_H

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/unique_id.h"
#include "support/ignore_refusal.h"

namespace tarnmf::test {

// The id whose last bytes are `number`.
inline UniIdT Id(std::uint32_t number) {
  UniIdT id{};
  for (int i = 15; i >= 12; --i, number >>= 8)
    id.bytes[i] = static_cast<std::uint8_t>(number);
  return id;
}

// "#number", or the 36 characters where the id is none of these.
inline std::string IdText(const UniIdT& id) {
  char text[kBtkUniIdDashedLength + 1] = {};
  std::size_t length = 0;
  IgnoreRefusal(  // the text fits
      btkUniIdFormat(text, sizeof text, &length, &id, kBtkUniIdDashed, 0));
  constexpr std::string_view kNumbered = "00000000-0000-0000-0000-0000";
  if (!std::string_view(text).starts_with(kNumbered)) return text;
  return '#' + std::to_string(std::stoul(text + kNumbered.size(), nullptr, 16));
}

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_IDS_H
