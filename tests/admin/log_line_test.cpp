#include "admin/log_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Lines = std::vector<std::string>;

Lines lines_of(std::vector<std::string_view> const& pieces)
{
  Lines found;
  auto const take = [&](std::string_view line) { found.emplace_back(line); };
  LogLines lines;
  for (std::string_view piece : pieces) lines.add(piece, take);
  lines.finish(take);
  return found;
}

}  // namespace

TEST(LogLine, ALineOfAJobHasLevelTimeNumberAndText)
{
  auto const line = parse_log_line("D [22/Nov/2026:01:33:47.123456 +0000] [Job 12] [STS] size=192");
  ASSERT_TRUE(line);
  EXPECT_EQ(line->level, 'D');
  EXPECT_EQ(line->time, "22/Nov/2026:01:33:47.123456 +0000");
  EXPECT_EQ(line->job, 12);
  EXPECT_EQ(line->text, "[STS] size=192");
}

TEST(LogLine, TheSchedulersLevelsAreThese)
{
  for (char const level : std::string("XACEWNIDd"))
    EXPECT_TRUE(parse_log_line(level + std::string(" [x] [Job 1] a"))) << level;
}

TEST(LogLine, ALineEndOfAnotherSystemIsNoText)
{
  EXPECT_EQ(parse_log_line("I [x] [Job 1] Job completed.\r").value().text, "Job completed.");
}

TEST(LogLine, OtherAndTornLinesAreNone)
{
  // Each in memory of its own, beyond which nothing may be read.
  for (std::string_view line :
       {"", "D", "D [22/Nov/2026", "D [x] ", "D [x] Added auto ServerAlias vm",
        "D [x] [Client 1] [Job 1] a", "D [x] [Job 1]", "D [x] [Job 1", "D [x] [Job 0] a",
        "D [x] [Job -1] a", "D [x] [Job 99999999999] a", "D [x] [Job 1a] a", "D [x] [Job ] a",
        "D [x] 1] a", "q [x] [Job 1] a", "D[x] [Job 1] a", "DD [x] [Job 1] a", "] [Job 1] a",
        "Nov 22 01:33:47 host cupsd[1]: [Job 1] a"})
    EXPECT_FALSE(parse_log_line({std::vector(line.begin(), line.end()).data(), line.size()}))
        << line;
}

TEST(LogLine, DotsStandForAnything)
{
  for (char const* pattern : {"a b c", "...", "a...", "...c", "a...c", "a ...b... c", "... b ..."})
    EXPECT_TRUE(is_like("a b c", pattern)) << pattern;
  for (char const* pattern : {"a b", "b...", "...b", "a...d...c", "a b...b c", "...c...c", ""})
    EXPECT_FALSE(is_like("a b c", pattern)) << pattern;
  EXPECT_FALSE(is_like("abc", "abc...c"));
}

TEST(LogLines, APieceMayEndAnywhere)
{
  Lines const should_be = {"one", "", "two", "end"};
  EXPECT_EQ(lines_of({"one\n\ntwo\nend"}), should_be);
  EXPECT_EQ(lines_of({"o", "ne", "\n", "\ntw", "o\n", "", "end"}), should_be);
}

TEST(LogLines, AZeroByteEndsALine)
{
  EXPECT_EQ(lines_of({std::string_view("one\0\0two\n", 9)}), (Lines{"one", "", "two", ""}));
}

TEST(LogLines, ALineThatIsTooLongIsLeftOut)
{
  std::string const longest(4096, 'x');
  EXPECT_EQ(lines_of({longest + "\na\n"}), (Lines{longest, "a", ""}));
  EXPECT_EQ(lines_of({longest + "x\na\n"}), (Lines{"a", ""}));
  EXPECT_EQ(lines_of({longest, "\na\n"}), (Lines{longest, "a", ""}));
  EXPECT_EQ(lines_of({longest, longest, "x\na", "\n"}), (Lines{"a", ""}));
}
