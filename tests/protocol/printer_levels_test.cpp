// The ink ribbon's counts, the names of its types and its text.
#include "protocol/printer_levels.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>

#include "tests/harness/retyped.h"
#include "tests/oracle/levels.h"

namespace {

static_assert(TypedRecord<PrinterLevels>);
static_assert(std::is_same_v<decltype(PrinterLevels::total_prints), std::uint16_t>);
static_assert(std::is_same_v<decltype(PrinterLevels::remaining_prints), std::uint16_t>);
static_assert(std::is_same_v<decltype(PrinterLevels::ink_sheet_type), std::uint8_t>);
static_assert(offsetof(PrinterLevels, type) == 0 && offsetof(PrinterLevels, total_prints) == 4
              && offsetof(PrinterLevels, remaining_prints) == 6
              && offsetof(PrinterLevels, ink_sheet_type) == 8);

TEST(PrinterLevels, UnavailableHoldsZeros)
{
  PrinterLevels const levels = PrinterLevels::Unavailable();
  EXPECT_EQ(levels.type, PrinterLevels::Type::Unavailable);
  EXPECT_EQ(levels.total_prints, 0);
  EXPECT_EQ(levels.remaining_prints, 0);
  EXPECT_EQ(levels.ink_sheet_type, 0);
}

TEST(PrinterLevels, FillTakesTotalThenRemainingThenType)
{
  PrinterLevels const levels = PrinterLevels::Fill(300, 120, 0x84);
  EXPECT_EQ(levels.type, PrinterLevels::Type::Available);
  EXPECT_EQ(levels.total_prints, 300);
  EXPECT_EQ(levels.remaining_prints, 120);
  EXPECT_EQ(levels.ink_sheet_type, 0x84);
}

TEST(PrinterLevels, TextShowsRemainingBeforeTotalAndFollowsTheType)
{
  PrinterLevels const filled = PrinterLevels::Fill(300, 120, 0x84);
  struct {
    char const* rule;
    PrinterLevels levels;
    bool available;
    char const *text, *ink_sheet;
  } const rows[] = {
      {"filled", filled, true, "ink ribbon 120 / 300 ink_sheet_type=0x84", "13x18(5x7″)"},
      {"the largest values are kept", PrinterLevels::Fill(65535, 65535, 0xff), true,
       "ink ribbon 65535 / 65535 ink_sheet_type=0xff", "ff"},
      {"counts from 32768 are not negative", PrinterLevels::Fill(32768, 40000, 0x0a), true,
       "ink ribbon 40000 / 32768 ink_sheet_type=0x0a", "0a"},
      {"zero counts are available", PrinterLevels::Fill(0, 0, 0x8f), true,
       "ink ribbon 0 / 0 ink_sheet_type=0x8f", "15x20(6x8″)"},
      {"the constructor sets zeros", PrinterLevels(PrinterLevels::Type::Available), true,
       "ink ribbon 0 / 0 ink_sheet_type=0x00", "00"},
      {"the name follows a zero code", PrinterLevels::Unavailable(), false, "UNAVAILABLE", "00"},
      {"foreign type 2", retyped(filled, 2), false, "UNKNOWN", "13x18(5x7″)"},
      {"foreign type -1", retyped(filled, -1), false, "UNKNOWN", "13x18(5x7″)"},
      {"foreign type 256", retyped(filled, 256), false, "UNKNOWN", "13x18(5x7″)"},
      {"the last type", retyped(filled, INT32_MAX), false, "UNKNOWN", "13x18(5x7″)"},
  };
  for (auto const& [rule, levels, available, text, ink_sheet] : rows) {
    EXPECT_EQ(levels.isAvailable(), available) << rule;
    EXPECT_EQ(levels.to_string(), text) << rule;
    EXPECT_EQ(levels.InkSheetTypeName(), ink_sheet) << rule;
  }
}

TEST(PrinterLevels, EveryInkSheetCodeHasItsName)
{
  for (unsigned code = 0; code < 256; ++code) {
    std::string name;
    append_ink_sheet_name(name, code);
    auto const levels = PrinterLevels::Fill(1, 1, static_cast<unsigned char>(code));
    EXPECT_EQ(levels.InkSheetTypeName(), name);
  }
}

}  // namespace
