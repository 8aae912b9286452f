// The six lines that tell the scheduler the ribbon's level.
#include "report/printer_levels_report.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"
#include "tests/oracle/levels.h"

namespace {

std::string reported(PrinterLevels const& levels)
{
  StderrCapture capture;
  report_printer_levels(levels);
  return capture.take();
}

std::string reported(unsigned total, unsigned remaining)
{
  return reported(PrinterLevels::Fill(static_cast<unsigned short>(total),
                                      static_cast<unsigned short>(remaining), 0x0a));
}

TEST(PrinterLevelsReport, HalfARibbon)
{
  EXPECT_TEXT(reported(PrinterLevels::Fill(700, 350, 0x84)),
              "DEBUG: [ReportLevels] ink ribbon 350 / 700 ink_sheet_type=0x84\n"
              "ATTR: marker-colors=#00FF00\n"
              "ATTR: marker-levels=50\n"
              "ATTR: marker-message=\"Prints Remaining = 350 / 700\"\n"
              "ATTR: marker-names=\"Ribbon Type: 13x18(5x7″)\"\n"
              "ATTR: marker-types=ink-ribbon\n");
}

PrinterLevels of_type(int type, PrinterLevels levels)
{
  levels.type = static_cast<PrinterLevels::Type>(type);
  return levels;
}

// Kept: the name is told although the levels are not; code zero has the name "00".
TEST(PrinterLevelsReport, LevelsThatAreNotAvailableHaveANameAllTheSame)
{
  PrinterLevels const half = PrinterLevels::Fill(700, 350, 0x84);
  PrinterLevels const unknown = PrinterLevels::Fill(65535, 65535, 0xff);
  struct {
    char const* rule;
    PrinterLevels levels;
    std::string log, name;
  } const rows[] = {
      {"no reply", PrinterLevels::Unavailable(), "UNAVAILABLE", "Ribbon Type: 00"},
      {"goes before unknown counts", of_type(0, unknown), "UNAVAILABLE", " "},
      {"counts are not looked at", of_type(0, half), "UNAVAILABLE", "Ribbon Type: 13x18(5x7″)"},
      {"a foreign type", of_type(2, half), "UNKNOWN", "Ribbon Type: 13x18(5x7″)"},
  };
  for (auto const& row : rows) {
    std::string const text = "DEBUG: [ReportLevels] " + row.log + "\nATTR: marker-colors=#00FF00\n"
                             + "ATTR: marker-levels=-2\nATTR: marker-message=\" \"\n"
                             + "ATTR: marker-names=\"" + row.name
                             + "\"\nATTR: marker-types=ink-ribbon\n";
    EXPECT_TEXT(reported(row.levels), text) << row.rule;
  }
}

void expect_level(unsigned total, unsigned remaining, unsigned level = 0)
{
  EXPECT_TEXT(reported(total, remaining), level_report_text({total, remaining, 0x0a}, level));
}

TEST(PrinterLevelsReport, CountsThatGiveNoPercentage)
{
  for (unsigned other : {0u, 1u, 350u, 65534u, 65535u}) {
    expect_level(other, 65535);
    expect_level(65535, other);
    expect_level(0, other);
  }
}

TEST(PrinterLevelsReport, ThePercentageIsRoundedDownAndNotBounded)
{
  struct {
    unsigned total, remaining, level;
  } const rows[] = {{700, 0, 0},        {700, 700, 100},     {700, 699, 99},  {700, 6, 0},
                    {700, 7, 1},        {3, 1, 33},          {3, 2, 66},      {65534, 1, 0},
                    {65534, 65533, 99}, {65534, 65534, 100}, {700, 800, 114}, {1, 65534, 6553400},
                    {1, 1, 100},        {32768, 32767, 99},  {65280, 255, 0}};
  for (auto const& row : rows) expect_level(row.total, row.remaining, row.level);
}

TEST(PrinterLevelsReport, TheNameFollowsTheInkSheetTypeWhateverTheCounts)
{
  for (unsigned code = 0; code < 256; ++code)
    for (unsigned remaining : {350U, 65535U})
      ASSERT_TEXT(reported(PrinterLevels::Fill(700, static_cast<unsigned short>(remaining),
                                               static_cast<unsigned char>(code))),
                  level_report_text({700, remaining, code}, 50));
}

TEST(PrinterLevelsReport, TheSameLevelsGiveTheSameLinesEveryTime)
{
  EXPECT_TEXT(reported(700, 350), reported(700, 350));
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
