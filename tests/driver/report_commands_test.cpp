// Which directive asks the printer, and what it reports.
#include "driver/report_commands.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/oracle/expected_texts.h"
#include "tests/harness/fake_world.h"
#include "tests/oracle/replies.h"

namespace {

StatusReply const REPLY = {
    .error = {0x20, 0x07, 0x07}, .ink_sheet_type = 0x8f, .total = 700, .remaining = 350};

// One query that the printer above answers, awake.
std::string query_text()
{
  return "DEBUG: get_printer_info_retry() START\n" + expected_status_query(REPLY.bytes())
         + "DEBUG: printer_info=[power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00 "
           "error_info=[0x20,0x07,0x07] levels=[ink ribbon 350 / 700 ink_sheet_type=0x8f]]\n"
           "DEBUG: #retry_status=[wake_up=fulfilled(0/60)]\n"
           "DEBUG: get_printer_info_retry() END\n";
}

// One query that the printer does not answer.
std::string silent_query_text()
{
  return "DEBUG: get_printer_info_retry() START\n"
         "DEBUG: get_printer_info() START\n"
         "DEBUG: [CMD] size=4\n"
         "DEBUG: [CMD] 0000: 1b 56 32 31\n"
         "> fwrite(1 x 4: 1b 56 32 31)\n"
         "> fflush(stdout)\n"
         "> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n"
         "> cupsBackChannelRead(room for 512, 1.000 s)\n"
         "DEBUG: cupsBackChannelRead() failed. ret=0\n"
         "DEBUG: get_printer_info() END\n"
         "DEBUG: printer_info=[UNAVAILABLE]\n"
         "DEBUG: get_printer_info_retry() END\n";
}

std::string const LEVELS =
    "DEBUG: [ReportLevels] ink ribbon 350 / 700 ink_sheet_type=0x8f\n"
    "ATTR: marker-colors=#00FF00\n"
    "ATTR: marker-levels=50\n"
    "ATTR: marker-message=\"Prints Remaining = 350 / 700\"\n"
    "ATTR: marker-names=\"Ribbon Type: 15x20(6x8\xe2\x80\xb3)\"\n"
    "ATTR: marker-types=ink-ribbon\n";

std::string const NO_LEVELS =
    "DEBUG: [ReportLevels] UNAVAILABLE\n"
    "ATTR: marker-colors=#00FF00\n"
    "ATTR: marker-levels=-2\n"
    "ATTR: marker-message=\" \"\n"
    "ATTR: marker-names=\"Ribbon Type: 00\"\n"
    "ATTR: marker-types=ink-ribbon\n";

constexpr int NO_ANSWER = 23;  // the reason of a printer that gives none

// Everything that happens when a directive is carried out.
std::string run(char const* directive, bool bidirectional, std::deque<FakeWorld::Read> reads = {})
{
  FakeWorld world;
  world.reads = std::move(reads);
  run_report_command(directive, bidirectional);
  return world.transcript();
}

TEST(ReportCommands, ReportStatusReportsThePrintersState)
{
  EXPECT_EQ(run("ReportStatus", true, {{REPLY.bytes()}}), query_text() + expected_states(9));
}

TEST(ReportCommands, ReportLevelsReportsLevelsThenStateOfOneQuery)
{
  EXPECT_EQ(run("ReportLevels", true, {{REPLY.bytes()}}),
            query_text() + LEVELS + expected_states(9));
}

TEST(ReportCommands, WithoutAnAnswerTheStateIsUnavailable)
{
  EXPECT_EQ(run("ReportStatus", true), silent_query_text() + expected_states(NO_ANSWER));
}

TEST(ReportCommands, WithoutAnAnswerLevelsAndStateAreUnavailable)
{
  EXPECT_EQ(run("ReportLevels", true),
            silent_query_text() + NO_LEVELS + expected_states(NO_ANSWER));
}

TEST(ReportCommands, APrinterThatNeverWakesIsReportedUnavailable)
{
  StatusReply asleep = REPLY;
  asleep.power_state = 1;
  std::string const end = "DEBUG: #retry over\nDEBUG: get_printer_info_retry() END\n" + NO_LEVELS
                          + expected_states(NO_ANSWER);
  std::deque<FakeWorld::Read> const replies(61, {asleep.bytes()});
  EXPECT_TRUE(run("ReportLevels", true, replies).ends_with(end));
}

TEST(ReportCommands, NotBidirectionalReportStatusReportsNoAnswer)
{
  EXPECT_EQ(run("ReportStatus", false, {{REPLY.bytes()}}), expected_states(NO_ANSWER));
}

// Intended: the reasons are left alone here, though "ReportStatus" states them.
TEST(ReportCommands, NotBidirectionalReportLevelsReportsNoState)
{
  EXPECT_EQ(run("ReportLevels", false, {{REPLY.bytes()}}), NO_LEVELS);
}

TEST(ReportCommands, DirectivesAreMatchedInAnyCase)
{
  for (char const* directive : {"reportstatus", "REPORTSTATUS", "rEPORTsTATUS"}) {
    EXPECT_EQ(run(directive, true, {{REPLY.bytes()}}), query_text() + expected_states(9));
    EXPECT_EQ(run(directive, false), expected_states(NO_ANSWER));
  }
  for (char const* directive : {"reportlevels", "REPORTLEVELS", "rEPORTlEVELS"}) {
    EXPECT_EQ(run(directive, true, {{REPLY.bytes()}}), query_text() + LEVELS + expected_states(9));
    EXPECT_EQ(run(directive, false), NO_LEVELS);
  }
}

TEST(ReportCommands, AnyOtherDirectiveDoesNothing)
{
  for (char const* directive :
       {"", " ", "Report", "ReportStatu", "ReportStatusX", "ReportLevel", "ReportLevels ",
        " ReportLevels", "ReportStatus\r", "Clean", "AutoConfigure", "PrintSelfTestPage",
        "ReportLevels ReportStatus", "\xc3\xa9"}) {
    EXPECT_EQ(run(directive, true, {{REPLY.bytes()}}), "") << directive;
    EXPECT_EQ(run(directive, false), "") << directive;
  }
}

TEST(ReportCommands, EveryDirectiveAsksAnew)
{
  FakeWorld world;
  world.reads = {{REPLY.bytes()}, {REPLY.bytes()}, {REPLY.bytes()}};
  run_report_command("ReportStatus", true);
  run_report_command("ReportStatus", true);
  run_report_command("ReportLevels", true);
  std::string const status = query_text() + expected_states(9);
  EXPECT_EQ(world.transcript(), status + status + query_text() + LEVELS + expected_states(9));
}

TEST(ReportCommands, AnExhaustedRibbonIsAReasonAndALevel)
{
  StatusReply exhausted = REPLY;
  exhausted.remaining = 0;
  std::string const text = run("ReportLevels", true, {{exhausted.bytes()}});
  EXPECT_TRUE(text.ends_with("ATTR: marker-types=ink-ribbon\n" + expected_states(5)));
  EXPECT_NE(text.find("ATTR: marker-levels=0\n"), std::string::npos);
}

}  // namespace
