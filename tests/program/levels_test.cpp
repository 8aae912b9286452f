// The ribbon's level, message and name for what the printer counts.
#include <gtest/gtest.h>

#include "tests/oracle/expected_text.h"
#include "tests/harness/run_filter.h"

namespace {

void expect_levels(StatusReply const& reply, std::string const& level, std::string const& message,
                   std::string const& name)
{
  bool const exhausted = reply.remaining == 0;
  SCOPED_TRACE(reply.levels_text());
  PrinterScript script;
  script.replies = {{{reply.bytes()}}};
  Transcript const run = run_commands("ReportLevels\n", script);
  EXPECT_EQ(run.messages, wake_up_text() + directive_text("ReportLevels", 1)
                              + awake_text(reply, exhausted ? "0xfe,0xed,0x01" : "GOOD")
                              + levels_report_text(reply.levels_text(), level, message, name)
                              + reasons_text(exhausted ? "0005" : ""));
  EXPECT_EQ(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
}

constexpr char const* NAME = "Ribbon Type: 13x18(5x7\xe2\x80\xb3)";

TEST(Levels, LevelIsThePercentageRoundedDown)
{
  struct {
    unsigned total, remaining;
    char const *level, *message;
  } const rows[] = {{700, 350, "50", "Prints Remaining = 350 / 700"},
                    {700, 700, "100", "Prints Remaining = 700 / 700"},
                    {700, 0, "0", "Prints Remaining = 0 / 700"},
                    {700, 6, "0", "Prints Remaining = 6 / 700"},
                    {700, 699, "99", "Prints Remaining = 699 / 700"},
                    {3, 1, "33", "Prints Remaining = 1 / 3"},
                    {3, 2, "66", "Prints Remaining = 2 / 3"},
                    {65534, 1, "0", "Prints Remaining = 1 / 65534"},
                    {65534, 65534, "100", "Prints Remaining = 65534 / 65534"},
                    {32768, 128, "0", "Prints Remaining = 128 / 32768"}};
  for (auto const& row : rows)
    expect_levels({.total = row.total, .remaining = row.remaining}, row.level, row.message, NAME);
}

TEST(Levels, MoreThanTheTotalIsMoreThanAHundred)
{
  expect_levels({.total = 700, .remaining = 800}, "114", "Prints Remaining = 800 / 700", NAME);
  expect_levels({.total = 1, .remaining = 65534}, "6553400", "Prints Remaining = 65534 / 1", NAME);
}

TEST(Levels, UnknownCountsGiveNoPercentage)
{
  expect_levels({.total = 700, .remaining = 65535}, "-1", " ", NAME);
  expect_levels({.total = 65535, .remaining = 350}, "-1", " ", NAME);
  expect_levels({.total = 65535, .remaining = 65535}, "-1", " ", NAME);
  expect_levels({.total = 0, .remaining = 350}, "-1", " ", NAME);
  expect_levels({.total = 0, .remaining = 0}, "-1", " ", NAME);
  expect_levels({.total = 65535, .remaining = 0}, "-1", " ", NAME);
}

TEST(Levels, RibbonIsNamedByItsSizeOrItsCode)
{
  struct {
    unsigned code;
    char const* name;
  } const rows[] = {{0x84, "Ribbon Type: 13x18(5x7\xe2\x80\xb3)"},
                    {0x8f, "Ribbon Type: 15x20(6x8\xe2\x80\xb3)"},
                    {0x0a, "Ribbon Type: 0a"},
                    {0x00, "Ribbon Type: 00"},
                    {0x85, "Ribbon Type: 85"},
                    {0xfe, "Ribbon Type: fe"},
                    {0xff, " "}};
  for (auto const& row : rows)
    expect_levels({.total = 700, .remaining = 70, .ink_sheet = row.code}, "10",
                  "Prints Remaining = 70 / 700", row.name);
}

TEST(Levels, NameDoesNotDependOnTheCounts)
{
  expect_levels({.total = 0, .remaining = 65535, .ink_sheet = 0x8f}, "-1", " ",
                "Ribbon Type: 15x20(6x8\xe2\x80\xb3)");
  expect_levels({.total = 0, .remaining = 65535, .ink_sheet = 0xff}, "-1", " ", " ");
}

TEST(Levels, PrinterThatGivesNoReplyHasUnavailableLevelsAndState)
{
  Transcript const run = run_commands("ReportLevels\n");
  EXPECT_EQ(run.messages, wake_up_text() + directive_text("ReportLevels", 1) + no_reply_text("-1")
                              + unavailable_levels_text() + unavailable_reasons_text());
  EXPECT_EQ(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
}

}  // namespace
