// SPDX-License-Identifier: Apache-2.0
#include "tarnmf/options.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "platform/host/btkhost.h"

namespace tarnmf {
namespace {

UniIdT Id(int number) {
  return {{static_cast<std::uint8_t>(number * 37), 1}};  // in no order
}

TEST(Options, KeepTheLastValueOfEveryId) {
  std::uint32_t value = 0;
  int failed = 0;
  for (int i = 0; i < 100; ++i) {
    const UniIdT id = Id(i);
    btkHostFailAllocation(0);
    btkConfEnableOption(&id, 1);
    const bool hit = btkHostAllocationFailed();
    btkHostFailAllocation(-1);
    failed += hit ? 1 : 0;
    value = 77;
    EXPECT_EQ(btkConfIsOptionKnown(&id, &value), hit ? 0 : 1);
    EXPECT_EQ(value, hit ? 77U : 1U);
    btkConfEnableOption(&id, static_cast<std::uint32_t>(i));
  }
  EXPECT_EQ(failed, 50);  // room is made for two
  for (int i = 0; i < 100; ++i) {
    const UniIdT id = Id(i);
    EXPECT_EQ(btkConfIsOptionKnown(&id, &value), 1);
    EXPECT_EQ(value, static_cast<std::uint32_t>(i));
  }
}

// Made before the library's own objects, so it is destroyed after its exit handlers have run.
struct LateReader {
  ~LateReader() {
    std::uint32_t value = 0;
    const UniIdT id = Id(1);
    if (isArmed) _exit(btkConfIsOptionKnown(&id, &value));
  }
  bool isArmed = false;
};
__attribute__((init_priority(101))) LateReader g_lateReader;

TEST(Options, AreForgottenAtExit) {
  const auto leave = [] {
    const UniIdT id = Id(1);
    btkConfEnableOption(&id, 1);
    g_lateReader.isArmed = true;
    std::exit(9);
  };
  EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tarnmf
