#include "admin/story_text.h"

#include "tests/harness/same_text.h"

TEST(Shown, NothingReachesATerminalAsAnOrder)
{
  EXPECT_EQ(shown("a\x1b[2J\x07\x7f\r\tb"), "a\\x1b[2J\\x07\\x7f\\x0d\\x09b");
  EXPECT_EQ(shown("\x9b"
                  "2J \xc2\x9b"
                  "2J"),
            "\\x9b2J \\xc2\\x9b2J");
  EXPECT_EQ(shown(std::string_view("a\0b", 3)), "a\\x00b");
}

TEST(Shown, Utf8StaysAndWhatIsNoneDoesNot)
{
  EXPECT_EQ(shown("5x7\u2033 \u00a0 \U0001f5a8"), "5x7\u2033 \u00a0 \U0001f5a8");
  EXPECT_EQ(shown("\xe2\x80"), "\\xe2\\x80");
  EXPECT_EQ(shown("\xc3"), "\\xc3");
  EXPECT_EQ(shown("\x80"), "\\x80");
  EXPECT_EQ(shown("\xff"), "\\xff");
}

TEST(Shown, ALongTextIsCut)
{
  EXPECT_EQ(shown(std::string(200, 'x')), std::string(200, 'x'));
  EXPECT_EQ(shown(std::string(201, 'x')), std::string(200, 'x') + "...");
}

TEST(StoryText, WhatComesAgainIsCounted)
{
  StoryText story;
  story.add("Answer", "one");
  story.add("Failed", "two", "    Cause   none\n");
  story.add("Answer", "one");
  story.add("Failed", "two", "    Cause   another\n");
  story.add("Answer", "one");
  EXPECT_TEXT(story.text(),
              "  Answer    one, 3 times\n"
              "  Failed    two\n    Cause   none\n"
              "  Failed    two\n    Cause   another\n");
}

TEST(StoryText, TwiceIsCountedToo)
{
  StoryText story;
  story.add("Answer", "one");
  story.add("Answer", "one");
  EXPECT_TEXT(story.text(), "  Answer    one, 2 times\n");
}

TEST(StoryText, AChapterBeginsAnew)
{
  StoryText story;
  story.add("Answer", "one");
  story.beginChapter();
  story.add("Answer", "one");
  EXPECT_TEXT(story.text(), "  Answer    one\n  Answer    one\n");
}

TEST(StoryText, ItIsFullAtSomeTime)
{
  StoryText story;
  for (int i = 0; i < 127; ++i) story.add("Said", std::to_string(i));
  story.add("Said", "0");
  EXPECT_FALSE(story.isFull());
  story.add("Said", "127");
  EXPECT_TRUE(story.isFull());
}
