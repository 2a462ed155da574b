// SPDX-License-Identifier: Apache-2.0
#include "platform/memory.h"

#include <gtest/gtest.h>

#include "platform/host/btkhost.h"

namespace {

TEST(MemoryDeathTest, ABlockIsReleasedAsWhatItWasAskedForAs) {
  void* const array = btkReAlloc(nullptr, 8);
  void* const table = btkSysReAlloc(nullptr, 8);
  char* const text = btk_strdup("text");
  if (btkHostBlockSize(array) != 0) {  // a build whose blocks know what they are
    EXPECT_DEATH(btkStrFree(array), "an array block .* is released or resized as a string");
    EXPECT_DEATH(btkFree(table), "a system block .* as an array block");
    EXPECT_DEATH(btkSysReAlloc(text, 9), "a string .* as a system block");
  }
  btkFree(array);
  btkSysFree(table);
  btkStrFree(btkStrReAlloc(text, 9));
}

TEST(Allocations, FailOnceWhenToldTo) {
  const std::int64_t before = btkHostLiveAllocations();
  btkHostFailAllocation(1);
  void* const blocks[] = {btk_strdup("a"), btk_strdup("b"), btk_wcsdup(BTK_W("c"))};
  EXPECT_TRUE(blocks[1] == nullptr && btkHostAllocationFailed());
  EXPECT_EQ(btkHostLiveAllocations(), before + 2);
  for (void* block : blocks)
    btkStrFree(block);
  EXPECT_EQ(btkHostLiveAllocations(), before);
}

}  // namespace
