#include "admin/logged_reply.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

LoggedReply reply_of(std::vector<std::string> const& lines)
{
  LoggedReply reply;
  for (std::string const& line : lines) reply.add(line);
  return reply;
}

constexpr std::string_view SIXTEEN = " 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e ff";
std::string const FIRST = "0000:" + std::string(SIXTEEN);

}  // namespace

TEST(LoggedReply, ItsLinesGiveItsBytes)
{
  LoggedReply const reply = reply_of({"size=18", FIRST, "0010: 1b 45"});
  EXPECT_TRUE(reply.isWhole());
  EXPECT_EQ(reply.getBytes().size(), 18U);
  EXPECT_EQ(reply.getBytes().substr(14), "\x0e\xff\x1b\x45");
}

TEST(LoggedReply, ItMayFillTheFiltersRoom)
{
  std::vector<std::string> lines = {"size=512"};
  for (int offset = 0; offset < 512; offset += 16) {
    char text[8];
    std::snprintf(text, sizeof text, "%04x:", static_cast<unsigned>(offset));
    lines.push_back(text + std::string(SIXTEEN));
  }
  EXPECT_TRUE(reply_of(lines).isWhole());
}

TEST(LoggedReply, BeforeItsLastLineItIsNotWhole)
{
  EXPECT_FALSE(LoggedReply().isBegun());
  EXPECT_FALSE(LoggedReply().isWhole());
  EXPECT_TRUE(reply_of({"size=18"}).isBegun());
  EXPECT_FALSE(reply_of({"size=18", FIRST}).isWhole());
}

TEST(LoggedReply, AGapIsNotFilled)
{
  EXPECT_FALSE(reply_of({FIRST}).isWhole());
  EXPECT_FALSE(reply_of({"0000:"}).isWhole());
  EXPECT_FALSE(reply_of({"size=18", "0010: 1b 45", FIRST}).isWhole());
  EXPECT_FALSE(reply_of({"size=18", FIRST, FIRST, "0010: 1b 45"}).isWhole());
  EXPECT_FALSE(reply_of({"size=18", "0020: 00", FIRST, "0010: 1b 45"}).isWhole());
}

TEST(LoggedReply, ATornLineIsAGap)
{
  for (char const* torn : {"0000", "0000:", ": 00 00", "0000: 0", "0000: 00 0", "0000: 00  00",
                           "0000: 0g 00", "0000: 00 00 ", "0000: 00 00DEBUG: Wrote", "0000: -1 00",
                           "0000: 00 00 00", "x000: 00 00", "0000:\xff 00"})
    EXPECT_FALSE(reply_of({"size=2", torn}).isWhole()) << torn;
  for (char const* size : {"size=", "size=x", "size=-1", "size=99999999999999999999", "size=513"})
    EXPECT_FALSE(reply_of({size}).isWhole() || reply_of({size, "0000: 00"}).isWhole()) << size;
}

TEST(LoggedReply, ItHoldsNoMoreBytesThanItSaysItHas)
{
  LoggedReply const reply = reply_of({"size=18", FIRST, "0010:" + std::string(SIXTEEN)});
  EXPECT_FALSE(reply.isWhole());
  EXPECT_EQ(reply.getBytes().size(), 16U);
}
