// What is reported for a reply: the ribbon's level, message and name, and the printer's reason.
#include <gtest/gtest.h>

#include "tests/program/woken_run.h"

namespace {

constexpr unsigned UNUSED = 0;  // where the counts give no percentage

// Both directives, each with the same reply: what has not changed is written again.
void expect_reports(StatusReply const& reply, unsigned level, std::string const& reasons)
{
  SCOPED_TRACE(reply.info_text());
  expect_woken_run(run_commands("ReportLevels\nReportStatus\n",
                                {.replies = {{{reply.bytes()}}, {{reply.bytes()}}}}),
                   directive_text("ReportLevels", 1) + awake_text(reply)
                       + level_report_text(reply.ribbon(), level) + reasons
                       + directive_text("ReportStatus", 2) + awake_text(reply) + reasons,
                   query_events() + query_events());
}

TEST(Reports, LevelIsThePercentageRoundedDownEvenOfMoreThanTheTotal)
{
  struct {
    unsigned total, remaining, level;
  } const rows[] = {{700, 350, 50},      {700, 700, 100}, {700, 0, 0},     {700, 6, 0},
                    {700, 699, 99},      {3, 1, 33},      {3, 2, 66},      {65534, 1, 0},
                    {65534, 65534, 100}, {32768, 128, 0}, {700, 800, 114}, {1, 65534, 6553400}};
  for (auto const& row : rows)
    expect_reports({.total = row.total, .remaining = row.remaining}, row.level,
                   reasons_text(row.remaining == 0 ? 5 : 0));
}

TEST(Reports, UnknownCountsGiveNoPercentageAndExhaustNoRibbon)
{
  for (StatusReply const& reply :
       {StatusReply{.total = 700, .remaining = 65535}, StatusReply{.remaining = 65535},
        StatusReply{.total = 65535, .remaining = 350},
        StatusReply{.total = 65535, .remaining = 65535}, StatusReply{.total = 0, .remaining = 1},
        StatusReply{.total = 0, .remaining = 350},
        StatusReply{.total = 0, .remaining = 65535, .ink_sheet = 0x8f},
        StatusReply{.total = 0, .remaining = 65535, .ink_sheet = 0xff}})
    expect_reports(reply, UNUSED, reasons_text());
}

TEST(Reports, RibbonIsNamedByItsSizeOrItsCode)
{
  for (unsigned code : {0x84U, 0x8fU, 0x0aU, 0x00U, 0x85U, 0xfeU, 0xffU})
    expect_reports({.total = 700, .remaining = 70, .ink_sheet = code}, 10, reasons_text());
}

TEST(Reports, RibbonIsExhaustedWhenNothingRemainsWhateverElseTheReplySays)
{
  for (StatusReply const& reply :
       {StatusReply{.total = 0, .remaining = 0}, StatusReply{.total = 65535, .remaining = 0},
        StatusReply{.error = {6, 2, 2}, .remaining = 0},
        StatusReply{.mech = {0x10, 0xff}, .memory = 0xff, .error = {6, 2, 2}, .remaining = 0}})
    expect_reports(reply, 0, reasons_text(5));
  expect_reports({.remaining = 1}, 0, reasons_text());
  expect_reports({.remaining = 256}, 85, reasons_text());
}

StatusReply reply_with(unsigned code)
{
  return {.error = {code >> 16, code >> 8 & 0xff, code & 0xff}};
}

TEST(Reports, EveryKnownCodeHasItsReason)
{
  for (KnownCode const& known : known_codes())
    expect_reports(reply_with(known.code), 40, reasons_text(known.reason));
}

TEST(Reports, UnknownCodeIsLoggedBeforeItsReason)
{
  for (unsigned code : {0x112233U, 0xabcdefU, 0x060200U, 0x060002U, 0x000202U, 0x000001U, 0x020206U,
                        0x0c0f01U, 0xffffffU})
    expect_reports(
        reply_with(code), 40,
        "DEBUG: encountered undefined error number (" + code_text(code) + ")\n" + reasons_text(23));
}

}  // namespace
