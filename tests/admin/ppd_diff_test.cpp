#include "admin/ppd_diff.h"

#include <gtest/gtest.h>

TEST(PpdDiff, IsAUnifiedDiffOfTheLines)
{
  EXPECT_EQ(ppd_diff("q", "*A: 1\r\n*B: 2\r\n", "*A: 1\r\n*C: 3\r\n"),
            "--- the PPD file of q\n+++ the same as it would be\n@@ -1,2 +1,2 @@\n *A: 1\n-*B: 2\n"
            "+*C: 3\n");
}

TEST(PpdDiff, ShowsNoControlCharacters)
{
  EXPECT_EQ(ppd_diff("q\x1b", "a\n", "a\n\x1b[2J"),
            "--- the PPD file of q?\n+++ the same as it would be\n@@ -1,1 +1,2 @@\n a\n+?[2J\n");
}
