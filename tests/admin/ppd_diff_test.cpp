#include "admin/ppd_diff.h"

#include <gtest/gtest.h>

namespace {

constexpr char const* HEAD = "--- the PPD file of q\n+++ the same as it would be\n";

// Lines of one letter each.
std::string lines(std::string_view letters)
{
  std::string text;
  for (char const letter : letters) text += std::string(1, letter) + "\n";
  return text;
}

// What changes between two such texts, without the head.
std::string changes(std::string_view now, std::string_view then)
{
  return ppd_diff("q", lines(now), lines(then)).substr(std::string_view(HEAD).size());
}

}  // namespace

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

TEST(PpdDiff, AChangeStandsAmongThreeLinesOnEachSide)
{
  EXPECT_EQ(changes("abcdefgh", "abcdXfgh"), "@@ -2,7 +2,7 @@\n b\n c\n d\n-e\n+X\n f\n g\n h\n");
  EXPECT_EQ(changes("abcdefghi", "Xabcdefgh"),
            "@@ -1,3 +1,4 @@\n+X\n a\n b\n c\n@@ -6,4 +7,3 @@\n f\n g\n h\n-i\n");
}

TEST(PpdDiff, ChangesWithSixLinesBetweenShareAHunk)
{
  EXPECT_EQ(changes("AbcdefgH", "XbcdefgY"),
            "@@ -1,8 +1,8 @@\n-A\n+X\n b\n c\n d\n e\n f\n g\n-H\n+Y\n");
  EXPECT_EQ(changes("AbcdefghI", "XbcdefghY"),
            "@@ -1,4 +1,4 @@\n-A\n+X\n b\n c\n d\n@@ -6,4 +6,4 @@\n f\n g\n h\n-I\n+Y\n");
}

TEST(PpdDiff, LinesGoAndComeWhereTheyStand)
{
  EXPECT_EQ(changes("abXYcd", "abcd"), "@@ -1,6 +1,4 @@\n a\n b\n-X\n-Y\n c\n d\n");
  EXPECT_EQ(changes("abcd", "abXYcd"), "@@ -1,4 +1,6 @@\n a\n b\n+X\n+Y\n c\n d\n");
  EXPECT_EQ(changes("aXYb", "aZb"), "@@ -1,4 +1,3 @@\n a\n-X\n-Y\n+Z\n b\n");
}

TEST(PpdDiff, NothingIsShownOfTheSameFile) { EXPECT_EQ(changes("abc", "abc"), ""); }
