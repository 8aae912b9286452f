// Which reason each of the printer's error codes becomes.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

std::string status_messages(StatusReply const& reply)
{
  PrinterScript script;
  script.replies = {{{reply.bytes()}}};
  return run_commands("ReportStatus\n", script).messages;
}

void expect_report(StatusReply const& reply, std::string const& report)
{
  SCOPED_TRACE(reply.info_text());
  EXPECT_TEXT(status_messages(reply),
              wake_up_text() + directive_text("ReportStatus", 1) + awake_text(reply) + report);
}

StatusReply reply_with(unsigned code)
{
  return {.error = {code >> 16, code >> 8 & 0xff, code & 0xff}};
}

TEST(StateReasons, EveryKnownCodeHasItsReason)
{
  for (KnownCode const& known : known_codes())
    expect_report(reply_with(known.code), reasons_text(known.reason));
}

TEST(StateReasons, UnknownCodeIsLoggedBeforeItsReason)
{
  for (unsigned code : {0x112233U, 0xabcdefU, 0x060200U, 0x060002U, 0x000202U, 0x000001U, 0x020206U,
                        0x0c0f01U, 0xffffffU})
    expect_report(reply_with(code), "DEBUG: encountered undefined error number (" + code_text(code)
                                        + ")\n" + reasons_text(23));
}

TEST(StateReasons, ExhaustedRibbonHidesTheErrorOfItsReply)
{
  expect_report({.error = {6, 2, 2}, .remaining = 0}, reasons_text(5));
}

TEST(StateReasons, RibbonIsNotExhaustedByWhatIsUnknownOrByItsTotal)
{
  for (StatusReply const& reply :
       {StatusReply{.remaining = 65535}, StatusReply{.total = 0, .remaining = 1},
        StatusReply{.remaining = 256}, StatusReply{.remaining = 1}})
    expect_report(reply, reasons_text());
}

TEST(StateReasons, UnchangedReasonsAreWrittenAgain)
{
  StatusReply const reply{.error = {0x30, 9, 7}};
  PrinterScript script;
  script.replies = {{{reply.bytes()}}, {{reply.bytes()}}};
  std::string const report = awake_text(reply) + reasons_text(12);
  EXPECT_TEXT(run_commands("ReportStatus\nReportStatus\n", script).messages,
              wake_up_text() + directive_text("ReportStatus", 1) + report
                  + directive_text("ReportStatus", 2) + report);
}

}  // namespace
