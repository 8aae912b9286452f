// What is read from a status reply, and what it says about printer and ribbon.
#include "protocol/printer_info.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <type_traits>

#include "tests/harness/retyped.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/status_reply.h"

namespace {

static_assert(std::is_same_v<std::underlying_type_t<PrinterInfo::Type>, std::int32_t>);
static_assert(!std::is_convertible_v<PrinterInfo::Type, std::int32_t>, "scoped enumeration");
static_assert(static_cast<int>(PrinterInfo::Type::Unavailable) == 0);
static_assert(static_cast<int>(PrinterInfo::Type::Available) == 1);
static_assert(!std::is_polymorphic_v<PrinterInfo> && sizeof(PrinterInfo) == 20);

using Code = unsigned char[3];

unsigned char byte(unsigned number) { return static_cast<unsigned char>(number); }

PrinterInfo parsed(StatusReply const& reply) { return PrinterInfo::Parse(reply.bytes().data()); }

TEST(PrinterInfo, FieldsStandInTheRecordsOwnOrder)
{
  StatusReply const reply = {.power = 2,
                             .mech = {3, 4},
                             .memory = 1,
                             .error = {5, 6, 7},
                             .total = 9,
                             .remaining = 10,
                             .ink_sheet = 8};
  EXPECT_EQ(first_number_of(parsed(reply)), 1);  // type
  auto const bytes = bytes_of(parsed(reply));
  EXPECT_EQ(bytes.at[4], 2);  // power_state
  EXPECT_EQ(bytes.at[5], 3);  // mech_state
  EXPECT_EQ(bytes.at[6], 4);
  EXPECT_EQ(bytes.at[7], 1);  // memory_state
  EXPECT_EQ(bytes.at[8], 5);  // error_info
  EXPECT_EQ(bytes.at[9], 6);
  EXPECT_EQ(bytes.at[10], 7);
  EXPECT_EQ(bytes.at[12] + bytes.at[13], 9);   // total_prints
  EXPECT_EQ(bytes.at[14] + bytes.at[15], 10);  // remaining_prints
  EXPECT_EQ(bytes.at[16], 8);                  // ink_sheet_type
}

TEST(PrinterInfo, TextOfAGoodPrinter)
{
  StatusReply const reply = {.total = 300, .remaining = 120, .ink_sheet = 0x84};
  EXPECT_EQ(parsed(reply).to_string(),
            "power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00 error_info=[GOOD] "
            "levels=[ink ribbon 120 / 300 ink_sheet_type=0x84]");
}

TEST(PrinterInfo, TextShowsEachFieldInItsPlace)
{
  StatusReply const reply = {.power = 0x1a,
                             .mech = {0x20, 0x8b},
                             .memory = 0xfe,
                             .error = {0x06, 0x02, 0xc2},
                             .total = 65535,
                             .remaining = 256,
                             .ink_sheet = 0x0f};
  EXPECT_TEXT(parsed(reply).to_string(), reply.info_text());
}

TEST(PrinterInfo, BytesThatNoFieldTakesAreIgnored)
{
  std::set<std::size_t> const fields = {4, 5, 128, 129, 131, 132, 133, 145, 148, 149, 150, 151};
  std::string const reply = StatusReply{}.bytes();
  std::string const text = PrinterInfo::Parse(reply.data()).to_string();
  for (std::size_t offset = 0; offset < reply.size(); offset++) {
    std::string other = reply;
    other[offset] = static_cast<char>(other[offset] ^ 0x5a);
    bool const ignored = PrinterInfo::Parse(other.data()).to_string() == text;
    ASSERT_EQ(ignored, !fields.contains(offset)) << offset;
  }
}

TEST(PrinterInfo, NothingBeyondByte151IsRead)
{
  std::string const reply = StatusReply{}.bytes();
  auto const exact = std::make_unique<char[]>(152);
  std::copy_n(reply.begin(), 152, exact.get());
  EXPECT_EQ(PrinterInfo::Parse(exact.get()).to_string(),
            PrinterInfo::Parse(reply.data()).to_string());
}

TEST(PrinterInfo, EveryTotalIsReadHighByteFirst)
{
  std::string reply = StatusReply{}.bytes();
  for (unsigned high = 0; high < 256; high++) {
    for (unsigned low = 0; low < 256; low++) {
      reply[148] = static_cast<char>(byte(high));
      reply[149] = static_cast<char>(byte(low));
      auto const levels = PrinterInfo::Parse(reply.data()).GetPrinterLevels();
      ASSERT_EQ(levels.total_prints, high * 256 + low);
      ASSERT_EQ(levels.remaining_prints, 120);
    }
  }
}

TEST(PrinterInfo, EveryRemainingIsReadHighByteFirst)
{
  std::string reply = StatusReply{}.bytes();
  for (unsigned high = 0; high < 256; high++) {
    for (unsigned low = 0; low < 256; low++) {
      reply[150] = static_cast<char>(byte(high));
      reply[151] = static_cast<char>(byte(low));
      PrinterInfo const info = PrinterInfo::Parse(reply.data());
      ASSERT_EQ(info.GetPrinterLevels().remaining_prints, high * 256 + low);
      ASSERT_EQ(info.GetPrinterLevels().total_prints, 300);
      ASSERT_EQ(info.GetPrinterState() == PrinterState::InternalSupplyLow(), high + low == 0);
    }
  }
}

TEST(PrinterInfo, LevelsCarryWhatThePrinterSent)
{
  for (unsigned code = 0; code < 256; code++) {
    auto const levels = parsed({.ink_sheet = code}).GetPrinterLevels();
    ASSERT_TRUE(levels.isAvailable());
    ASSERT_EQ(levels.ink_sheet_type, code);
  }
  auto const unknown = parsed({.total = 65535, .remaining = 65535, .ink_sheet = 0xff});
  EXPECT_EQ(unknown.GetPrinterLevels().to_string(), "ink ribbon 65535 / 65535 ink_sheet_type=0xff");
}

TEST(PrinterInfo, OnlyPowerStateZeroIsAwake)
{
  for (unsigned state = 0; state < 256; state++) {
    PrinterInfo const info = parsed({.power = state});
    ASSERT_TRUE(info.isAvailable());
    ASSERT_EQ(info.isWakeUp(), state == 0x00) << state;
  }
}

TEST(PrinterInfo, TheMechanismIsGoodInTwoStatesOnly)
{
  for (unsigned first = 0; first < 256; first++) {
    for (unsigned second = 0; second < 256; second++) {
      bool const good = (first == 0x00 || first == 0x20) && second == 0x00;
      ASSERT_EQ(parsed({.mech = {first, second}}).isMechGood(), good) << first << " " << second;
    }
  }
}

TEST(PrinterInfo, OnlyMemoryStateFfIsFull)
{
  for (unsigned state = 0; state < 256; state++) {
    ASSERT_EQ(parsed({.memory = state}).isMemoryFree(), state != 0xff) << state;
  }
}

TEST(PrinterInfo, TheStateIsThePrintersErrorCode)
{
  Code const code = {0x06, 0x02, 0x82};
  EXPECT_TRUE(parsed({.error = {0x06, 0x02, 0x82}}).GetPrinterState() == &code);
  EXPECT_TRUE(parsed({.error = {0, 0, 0}}).GetPrinterState() == PrinterState::Good());
}

TEST(PrinterInfo, AnExhaustedRibbonHidesTheErrorCode)
{
  PrinterInfo const info = parsed({.error = {0x06, 0x02, 0x02}, .remaining = 0});
  EXPECT_TRUE(info.GetPrinterState() == PrinterState::InternalSupplyLow());
  EXPECT_NE(info.to_string().find(" error_info=[0xfe,0xed,0x01] levels=["), std::string::npos);
  EXPECT_TRUE(parsed({.remaining = 0}).GetPrinterState() == PrinterState::InternalSupplyLow());
}

TEST(PrinterInfo, AnUnknownRemainingCountsAsPrintsRemaining)
{
  EXPECT_TRUE(parsed({.remaining = 65535}).GetPrinterState() == PrinterState::Good());
}

TEST(PrinterInfo, ATotalOfZeroPlaysNoPartInTheState)
{
  Code const code = {0x06, 0x02, 0x02};
  PrinterInfo const info = parsed({.error = {0x06, 0x02, 0x02}, .total = 0, .remaining = 1});
  EXPECT_TRUE(info.GetPrinterState() == &code);
  EXPECT_TRUE(info.GetPrinterLevels().isAvailable());
  EXPECT_EQ(info.GetPrinterLevels().total_prints, 0);
}

void expect_unavailable(PrinterInfo const& info)
{
  EXPECT_FALSE(info.isAvailable());
  EXPECT_FALSE(info.isWakeUp());
  EXPECT_FALSE(info.isMechGood());
  EXPECT_FALSE(info.isMemoryFree());
  EXPECT_TRUE(info.GetPrinterState() == PrinterState::Unavailable());
  EXPECT_EQ(info.GetPrinterLevels().to_string(), "UNAVAILABLE");
  EXPECT_EQ(info.GetPrinterLevels().total_prints, 0);
  EXPECT_EQ(info.to_string(), "UNAVAILABLE");
}

TEST(PrinterInfo, AnUnavailableRecordSaysNoToEverything)
{
  expect_unavailable(PrinterInfo::Unavailable());
  expect_unavailable(PrinterInfo(PrinterInfo::Type::Unavailable));
}

TEST(PrinterInfo, ARecordMadeWithoutAReplyHoldsZeros)
{
  EXPECT_EQ(PrinterInfo(PrinterInfo::Type::Available).to_string(),
            "power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00 "
            "error_info=[0xfe,0xed,0x01] levels=[ink ribbon 0 / 0 ink_sheet_type=0x00]");
}

TEST(PrinterInfo, FieldsOfAnUnavailableRecordAreNotLookedAt)
{
  expect_unavailable(retyped(parsed({.error = {0x06, 0x02, 0x02}}), 0));
}

// Kept as it is: only isAvailable and the text ask for the exact type.
TEST(PrinterInfo, AForeignTypeIsUnavailableYetIsReadAsAvailable)
{
  for (int type : {2, -1, 256, INT32_MAX}) {
    PrinterInfo const info = retyped(parsed({}), type);
    EXPECT_FALSE(info.isAvailable()) << type;
    EXPECT_TRUE(info.isWakeUp()) << type;
    EXPECT_TRUE(info.isMechGood()) << type;
    EXPECT_TRUE(info.isMemoryFree()) << type;
    EXPECT_TRUE(info.GetPrinterState() == PrinterState::Good()) << type;
    EXPECT_EQ(info.GetPrinterLevels().to_string(), "ink ribbon 120 / 300 ink_sheet_type=0x84");
    EXPECT_EQ(info.to_string(), "UNKNOWN") << type;
  }
}

TEST(PrinterInfo, AForeignTypesBadStatesAreRead)
{
  StatusReply const bad = {.power = 1, .mech = {1, 0}, .memory = 0xff};
  PrinterInfo const info = retyped(parsed(bad), 2);
  EXPECT_FALSE(info.isWakeUp());
  EXPECT_FALSE(info.isMechGood());
  EXPECT_FALSE(info.isMemoryFree());
}

}  // namespace
