// The ribbon's level, message and name for what the printer counts.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

void expect_levels(StatusReply const& reply, unsigned level = 0)
{
  std::string const levels = level_report_text(reply.ribbon(), level);
  SCOPED_TRACE(reply.info_text());
  PrinterScript script;
  script.replies = {{{reply.bytes()}}};
  Transcript const run = run_commands("ReportLevels\n", script);
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportLevels", 1) + awake_text(reply)
                                + levels + reasons_text(reply.remaining == 0 ? 5 : 0));
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
}

TEST(Levels, LevelIsThePercentageRoundedDown)
{
  struct {
    unsigned total, remaining, level;
  } const rows[] = {{700, 350, 50},      {700, 700, 100}, {700, 0, 0}, {700, 6, 0},
                    {700, 699, 99},      {3, 1, 33},      {3, 2, 66},  {65534, 1, 0},
                    {65534, 65534, 100}, {32768, 128, 0}};
  for (auto const& row : rows)
    expect_levels({.total = row.total, .remaining = row.remaining}, row.level);
}

TEST(Levels, MoreThanTheTotalIsMoreThanAHundred)
{
  expect_levels({.total = 700, .remaining = 800}, 114);
  expect_levels({.total = 1, .remaining = 65534}, 6553400);
}

TEST(Levels, UnknownCountsGiveNoPercentage)
{
  expect_levels({.total = 700, .remaining = 65535});
  expect_levels({.total = 65535, .remaining = 350});
  expect_levels({.total = 65535, .remaining = 65535});
  expect_levels({.total = 0, .remaining = 350});
  expect_levels({.total = 0, .remaining = 0});
  expect_levels({.total = 65535, .remaining = 0});
}

TEST(Levels, RibbonIsNamedByItsSizeOrItsCode)
{
  for (unsigned code : {0x84U, 0x8fU, 0x0aU, 0x00U, 0x85U, 0xfeU, 0xffU})
    expect_levels({.total = 700, .remaining = 70, .ink_sheet = code}, 10);
}

TEST(Levels, NameDoesNotDependOnTheCounts)
{
  expect_levels({.total = 0, .remaining = 65535, .ink_sheet = 0x8f});
  expect_levels({.total = 0, .remaining = 65535, .ink_sheet = 0xff});
}

TEST(Levels, PrinterThatGivesNoReplyHasUnavailableLevelsAndState)
{
  Transcript const run = run_commands("ReportLevels\n");
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportLevels", 1) + no_reply_text(-1)
                                + unavailable_levels_text() + unavailable_reasons_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
}

}  // namespace
