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
  btkStrFree(text);
}

}  // namespace
