#include "admin/reason_texts.h"

#include <gtest/gtest.h>

#include "tests/oracle/reasons.h"

namespace {

// "LINE: error" of the first bad line; empty if all lines are good.
std::string error(std::string_view bytes)
{
  ReasonTexts const result = parse_reason_texts(bytes);
  return result.error_line == 0 ? "" : std::to_string(result.error_line) + ": " + result.error;
}

}  // namespace

TEST(ReasonTexts, ALineIsAKeywordAndAText)
{
  ReasonTexts const result = parse_reason_texts(
      "# a comment\n\ncom.velmo-error0001 First text\r\n\tcom.velmo-error0023 \t No answer ");
  ASSERT_EQ(result.texts.size(), 2u) << result.error;
  EXPECT_EQ(result.texts[0].keyword, "com.velmo-error0001");
  EXPECT_EQ(result.texts[0].text, "First text");
  EXPECT_EQ(result.texts[1].keyword, "com.velmo-error0023");
  EXPECT_EQ(result.texts[1].text, "No answer");
}

TEST(ReasonTexts, EveryKeywordOfTheFilterIsKnownAndNoOther)
{
  for (int const reason : known_reasons()) EXPECT_EQ(error(keyword(reason) + " T\n"), "") << reason;
  std::string const unknown =
      "1: the first word is none of the filter's keywords, such as com.velmo-error0001";
  for (char const* other : {"com.velmo-error0015", "com.velmo-error0019", "com.velmo-error001",
                            "com.velmo-error00010", "paper-jam", "Com.velmo-error0001"})
    EXPECT_EQ(error(std::string(other) + " T\n"), unknown) << other;
}

TEST(ReasonTexts, ABadTextIsNamedWithItsLine)
{
  std::string const keyword = "\ncom.velmo-error0001";
  EXPECT_EQ(error(keyword), "2: no text behind com.velmo-error0001");
  for (char const* text : {" a: b", " a \"b\"", " a/b", " <41", " 41>"})
    EXPECT_EQ(error(keyword + text), "2: a text cannot hold any of : \" / < >") << text;
  EXPECT_EQ(error(keyword + " a\x1b[2J"), "2: a text cannot hold a control character");
  EXPECT_EQ(error(keyword + " a\x7f"), "2: a text cannot hold a control character");
  EXPECT_EQ(error(keyword + " a\xfc"), "2: the text is not UTF-8");
  EXPECT_EQ(error("com.velmo-error0001 A\ncom.velmo-error0001 B\n"),
            "2: a second text for com.velmo-error0001");
}

TEST(ReasonTexts, ATextHasAtMostEightyBytes)
{
  EXPECT_EQ(error("com.velmo-error0001 " + std::string(80, 'x')), "");
  EXPECT_EQ(error("com.velmo-error0001 " + std::string(81, 'x')), "1: a text has at most 80 bytes");
}

TEST(Utf8, WellFormedTextsPass)
{
  for (char const* text : {"", "a", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf",
                           "\xee\x80\x80", "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"})
    EXPECT_TRUE(is_utf8(text)) << text;
}

TEST(Utf8, OthersDoNot)
{
  for (char const* text :
       {"\x80", "\xbf", "\xc0\x80", "\xc1\xbf", "\xc2", "\xc2g", "\xc2\xc0", "\xe0\x9f\xbf",
        "\xe1\x80", "\xe1\x80g", "\xed\xa0\x80", "\xf0\x8f\xbf\xbf", "\xf1\x80\x80g",
        "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xff"})
    EXPECT_FALSE(is_utf8(text)) << testing::PrintToString(text);
}
