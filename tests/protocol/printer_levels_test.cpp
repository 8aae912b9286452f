// The ink ribbon's counts, the names of its types and its text.
#include "protocol/printer_levels.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

namespace {

static_assert(std::is_same_v<std::underlying_type_t<PrinterLevels::Type>, std::int32_t>);
static_assert(!std::is_convertible_v<PrinterLevels::Type, std::int32_t>, "scoped enumeration");
static_assert(static_cast<int>(PrinterLevels::Type::Unavailable) == 0);
static_assert(static_cast<int>(PrinterLevels::Type::Available) == 1);
static_assert(std::is_same_v<decltype(PrinterLevels::total_prints), std::uint16_t>);
static_assert(std::is_same_v<decltype(PrinterLevels::remaining_prints), std::uint16_t>);
static_assert(std::is_same_v<decltype(PrinterLevels::ink_sheet_type), std::uint8_t>);
static_assert(offsetof(PrinterLevels, type) == 0 && offsetof(PrinterLevels, total_prints) == 4
              && offsetof(PrinterLevels, remaining_prints) == 6
              && offsetof(PrinterLevels, ink_sheet_type) == 8);
static_assert(!std::is_polymorphic_v<PrinterLevels>);

TEST(PrinterLevels, UnavailableHoldsZeros)
{
  PrinterLevels const levels = PrinterLevels::Unavailable();
  EXPECT_FALSE(levels.isAvailable());
  EXPECT_EQ(levels.type, PrinterLevels::Type::Unavailable);
  EXPECT_EQ(levels.total_prints, 0);
  EXPECT_EQ(levels.remaining_prints, 0);
  EXPECT_EQ(levels.ink_sheet_type, 0);
  EXPECT_EQ(levels.to_string(), "UNAVAILABLE");
}

TEST(PrinterLevels, TheConstructorSetsTheTypeAndZeros)
{
  PrinterLevels const levels(PrinterLevels::Type::Available);
  EXPECT_TRUE(levels.isAvailable());
  EXPECT_EQ(levels.to_string(), "ink ribbon 0 / 0 ink_sheet_type=0x00");
}

TEST(PrinterLevels, TheNameOfUnavailableLevelsFollowsTheirZeroCode)
{
  EXPECT_EQ(PrinterLevels::Unavailable().InkSheetTypeName(), "00");
}

TEST(PrinterLevels, FillTakesTotalThenRemainingThenType)
{
  PrinterLevels const levels = PrinterLevels::Fill(300, 120, 0x84);
  EXPECT_TRUE(levels.isAvailable());
  EXPECT_EQ(levels.total_prints, 300);
  EXPECT_EQ(levels.remaining_prints, 120);
  EXPECT_EQ(levels.ink_sheet_type, 0x84);
}

TEST(PrinterLevels, TextShowsRemainingBeforeTotal)
{
  EXPECT_EQ(PrinterLevels::Fill(300, 120, 0x84).to_string(),
            "ink ribbon 120 / 300 ink_sheet_type=0x84");
}

TEST(PrinterLevels, TheLargestValuesAreKeptAsTheyAre)
{
  PrinterLevels const levels = PrinterLevels::Fill(65535, 65535, 0xff);
  EXPECT_TRUE(levels.isAvailable());
  EXPECT_EQ(levels.to_string(), "ink ribbon 65535 / 65535 ink_sheet_type=0xff");
  EXPECT_EQ(levels.InkSheetTypeName(), "ff");
}

TEST(PrinterLevels, CountsFrom32768AreNotNegative)
{
  EXPECT_EQ(PrinterLevels::Fill(32768, 40000, 0x0a).to_string(),
            "ink ribbon 40000 / 32768 ink_sheet_type=0x0a");
}

TEST(PrinterLevels, ZeroCountsAreAvailable)
{
  PrinterLevels const levels = PrinterLevels::Fill(0, 0, 0x8f);
  EXPECT_TRUE(levels.isAvailable());
  EXPECT_EQ(levels.InkSheetTypeName(), "15x20(6x8\xe2\x80\xb3)");
}

TEST(PrinterLevels, EveryInkSheetCodeHasItsName)
{
  std::string const digits = "0123456789abcdef";
  for (unsigned code = 0; code < 256; code++) {
    std::string expected = {digits[code / 16], digits[code % 16]};
    if (code == 0x84) expected = "13x18(5x7\xe2\x80\xb3)";
    if (code == 0x8f) expected = "15x20(6x8\xe2\x80\xb3)";
    auto const levels = PrinterLevels::Fill(1, 1, static_cast<unsigned char>(code));
    EXPECT_EQ(levels.InkSheetTypeName(), expected);
  }
}

TEST(PrinterLevels, AForeignTypeIsUnknownButKeepsItsName)
{
  for (int type : {2, -1, 256, INT32_MAX}) {
    PrinterLevels levels = PrinterLevels::Fill(300, 120, 0x84);
    levels.type = static_cast<PrinterLevels::Type>(type);
    EXPECT_FALSE(levels.isAvailable()) << type;
    EXPECT_EQ(levels.to_string(), "UNKNOWN") << type;
    EXPECT_EQ(levels.InkSheetTypeName(), "13x18(5x7\xe2\x80\xb3)") << type;
  }
}

}  // namespace
