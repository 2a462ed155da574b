// SPDX-License-Identifier: Apache-2.0
#include "tools/tarnmf/unified_diff.h"

#include <gtest/gtest.h>

namespace tool {
namespace {

TEST(UnifiedDiff, LooksLikeAPatch) {
  EXPECT_EQ(UnifiedDiff("a", "x\ny\n", "x\ny\n"), "");
  EXPECT_EQ(
      UnifiedDiff("a/b", "1\n2\n3\n4\n5\n6\n7\n8\n9\nend", "1\n2\n3\n4\nV\n6\n7\n8\n9\nend\n"),
      "--- a/b\n+++ a/b\n@@ -2,9 +2,9 @@\n 2\n 3\n 4\n-5\n+V\n 6\n 7\n 8\n 9\n-end\n"
      "\\ No newline at end of file\n+end\n");
  EXPECT_EQ(UnifiedDiff("a", "", "x\n"), "--- a\n+++ a\n@@ -0,0 +1,1 @@\n+x\n");
}

}  // namespace
}  // namespace tool
