// SPDX-License-Identifier: Apache-2.0
// Ids of tests.
#ifndef TESTS_SUPPORT_IDS_H
#define TESTS_SUPPORT_IDS_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "platform/unique_id.h"

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
  std::string text;
  for (int i = 0; i < 16; ++i) {
    char byte[4];
    std::snprintf(byte, sizeof byte, "%s%02x", i >= 4 && i <= 10 && i % 2 == 0 ? "-" : "",
                  unsigned{id.bytes[i]});
    text += byte;
  }
  constexpr std::string_view kNumbered = "00000000-0000-0000-0000-0000";
  if (!text.starts_with(kNumbered)) return text;
  return '#' + std::to_string(std::stoul(text.substr(kNumbered.size()), nullptr, 16));
}

}  // namespace tarnmf::test

#endif  // TESTS_SUPPORT_IDS_H
