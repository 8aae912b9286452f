// The six lines that tell the scheduler the ribbon's level.
#include "report/printer_levels_report.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/harness/stderr_capture.h"

namespace {

std::string reported(PrinterLevels const& levels)
{
  StderrCapture capture;
  report_printer_levels(levels);
  return capture.take();
}

// The lines of available levels with ink sheet type 0x0a.
std::string lines(unsigned total, unsigned remaining, std::string const& level,
                  std::string const& message)
{
  return "DEBUG: [ReportLevels] ink ribbon " + std::to_string(remaining) + " / "
         + std::to_string(total)
         + " ink_sheet_type=0x0a\n"
           "ATTR: marker-colors=#00FF00\n"
           "ATTR: marker-levels="
         + level + "\nATTR: marker-message=\"" + message
         + "\"\n"
           "ATTR: marker-names=\"Ribbon Type: 0a\"\n"
           "ATTR: marker-types=ink-ribbon\n";
}

std::string reported(unsigned total, unsigned remaining)
{
  return reported(PrinterLevels::Fill(static_cast<unsigned short>(total),
                                      static_cast<unsigned short>(remaining), 0x0a));
}

TEST(PrinterLevelsReport, HalfARibbon)
{
  EXPECT_EQ(reported(PrinterLevels::Fill(700, 350, 0x84)),
            "DEBUG: [ReportLevels] ink ribbon 350 / 700 ink_sheet_type=0x84\n"
            "ATTR: marker-colors=#00FF00\n"
            "ATTR: marker-levels=50\n"
            "ATTR: marker-message=\"Prints Remaining = 350 / 700\"\n"
            "ATTR: marker-names=\"Ribbon Type: 13x18(5x7\xe2\x80\xb3)\"\n"
            "ATTR: marker-types=ink-ribbon\n");
}

// Kept: the name is told although the levels are not; code zero has the name "00".
TEST(PrinterLevelsReport, UnavailableLevels)
{
  EXPECT_EQ(reported(PrinterLevels::Unavailable()),
            "DEBUG: [ReportLevels] UNAVAILABLE\n"
            "ATTR: marker-colors=#00FF00\n"
            "ATTR: marker-levels=-2\n"
            "ATTR: marker-message=\" \"\n"
            "ATTR: marker-names=\"Ribbon Type: 00\"\n"
            "ATTR: marker-types=ink-ribbon\n");
}

TEST(PrinterLevelsReport, UnavailableGoesBeforeUnknownCounts)
{
  PrinterLevels levels = PrinterLevels::Fill(65535, 65535, 0xff);
  levels.type = PrinterLevels::Type::Unavailable;
  EXPECT_EQ(reported(levels),
            "DEBUG: [ReportLevels] UNAVAILABLE\n"
            "ATTR: marker-colors=#00FF00\n"
            "ATTR: marker-levels=-2\n"
            "ATTR: marker-message=\" \"\n"
            "ATTR: marker-names=\" \"\n"
            "ATTR: marker-types=ink-ribbon\n");
}

TEST(PrinterLevelsReport, CountsOfUnavailableLevelsAreNotLookedAt)
{
  PrinterLevels levels = PrinterLevels::Fill(700, 350, 0x84);
  levels.type = PrinterLevels::Type::Unavailable;
  EXPECT_EQ(reported(levels),
            "DEBUG: [ReportLevels] UNAVAILABLE\n"
            "ATTR: marker-colors=#00FF00\n"
            "ATTR: marker-levels=-2\n"
            "ATTR: marker-message=\" \"\n"
            "ATTR: marker-names=\"Ribbon Type: 13x18(5x7\xe2\x80\xb3)\"\n"
            "ATTR: marker-types=ink-ribbon\n");
}

TEST(PrinterLevelsReport, AForeignTypeIsNotAvailable)
{
  PrinterLevels levels = PrinterLevels::Fill(700, 350, 0x84);
  levels.type = static_cast<PrinterLevels::Type>(2);
  EXPECT_EQ(reported(levels),
            "DEBUG: [ReportLevels] UNKNOWN\n"
            "ATTR: marker-colors=#00FF00\n"
            "ATTR: marker-levels=-2\n"
            "ATTR: marker-message=\" \"\n"
            "ATTR: marker-names=\"Ribbon Type: 13x18(5x7\xe2\x80\xb3)\"\n"
            "ATTR: marker-types=ink-ribbon\n");
}

TEST(PrinterLevelsReport, CountsThatGiveNoPercentage)
{
  for (unsigned other : {0u, 1u, 350u, 65534u, 65535u}) {
    EXPECT_EQ(reported(other, 65535), lines(other, 65535, "-1", " "));
    EXPECT_EQ(reported(65535, other), lines(65535, other, "-1", " "));
    EXPECT_EQ(reported(0, other), lines(0, other, "-1", " "));
  }
}

TEST(PrinterLevelsReport, ThePercentageIsRoundedDownAndNotBounded)
{
  struct Case {
    unsigned total;
    unsigned remaining;
    char const* level;
    char const* message;
  };
  constexpr Case CASES[] = {
      {700, 0, "0", "Prints Remaining = 0 / 700"},
      {700, 700, "100", "Prints Remaining = 700 / 700"},
      {700, 699, "99", "Prints Remaining = 699 / 700"},
      {700, 6, "0", "Prints Remaining = 6 / 700"},
      {700, 7, "1", "Prints Remaining = 7 / 700"},
      {3, 1, "33", "Prints Remaining = 1 / 3"},
      {3, 2, "66", "Prints Remaining = 2 / 3"},
      {65534, 1, "0", "Prints Remaining = 1 / 65534"},
      {65534, 65533, "99", "Prints Remaining = 65533 / 65534"},
      {65534, 65534, "100", "Prints Remaining = 65534 / 65534"},
      {700, 800, "114", "Prints Remaining = 800 / 700"},
      {1, 65534, "6553400", "Prints Remaining = 65534 / 1"},
      {1, 1, "100", "Prints Remaining = 1 / 1"},
      {32768, 32767, "99", "Prints Remaining = 32767 / 32768"},
      {65280, 255, "0", "Prints Remaining = 255 / 65280"},
  };
  for (Case const& c : CASES) {
    EXPECT_EQ(reported(c.total, c.remaining), lines(c.total, c.remaining, c.level, c.message));
  }
}

TEST(PrinterLevelsReport, TheNameFollowsTheInkSheetTypeWhateverTheCounts)
{
  std::string const digits = "0123456789abcdef";
  for (unsigned code = 0; code < 256; code++) {
    std::string name = std::string("Ribbon Type: ") + digits[code / 16] + digits[code % 16];
    if (code == 0x84) name = "Ribbon Type: 13x18(5x7\xe2\x80\xb3)";
    if (code == 0x8f) name = "Ribbon Type: 15x20(6x8\xe2\x80\xb3)";
    if (code == 0xff) name = " ";
    std::string const line = "\"\nATTR: marker-names=\"" + name + "\"\nATTR: marker-types=";
    for (unsigned short remaining : std::array<unsigned short, 2>{350, 65535}) {
      std::string const text =
          reported(PrinterLevels::Fill(700, remaining, static_cast<unsigned char>(code)));
      EXPECT_NE(text.find(line), std::string::npos) << text;
    }
  }
}

TEST(PrinterLevelsReport, AnUnknownInkSheetTypeKeepsLevelAndMessage)
{
  EXPECT_EQ(reported(PrinterLevels::Fill(700, 350, 0xff)),
            "DEBUG: [ReportLevels] ink ribbon 350 / 700 ink_sheet_type=0xff\n"
            "ATTR: marker-colors=#00FF00\n"
            "ATTR: marker-levels=50\n"
            "ATTR: marker-message=\"Prints Remaining = 350 / 700\"\n"
            "ATTR: marker-names=\" \"\n"
            "ATTR: marker-types=ink-ribbon\n");
}

TEST(PrinterLevelsReport, TheSameLevelsGiveTheSameLinesEveryTime)
{
  EXPECT_EQ(reported(700, 350), reported(700, 350));
}

TEST(PrinterLevelsReport, EachLineIsOneWrite)
{
  StderrWrites capture;
  report_printer_levels(PrinterLevels::Fill(700, 350, 0x84));
  std::vector<std::string> const writes = capture.take();
  EXPECT_EQ(writes.size(), 6u);
  EXPECT_TRUE(each_is_one_line(writes));
}

}  // namespace
