// Which directive asks the printer, and what it reports.
#include "driver/report_commands.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"
#include "tests/oracle/told_world.h"

namespace {

StatusReply const REPLY = {.error = {0x20, 0x07, 0x07}, .ink_sheet = 0x8f};

std::string query(std::deque<FakeScript::Read> reads)
{
  return told({.reads = std::move(reads)}, tell_retried_printer_status);
}

std::string const QUERY = query({{REPLY.bytes()}});
std::string const SILENT_QUERY = query({});
std::string const LEVELS = level_report_text(REPLY.ribbon(), 40);
std::string const NO_LEVELS = unavailable_levels_text();
std::string const REASONS = reasons_text(9);
std::string const NO_ANSWER = unavailable_reasons_text();

// Everything that happens when a directive is carried out.
std::string run(char const* directive, bool bidirectional, std::deque<FakeScript::Read> reads = {})
{
  FakeWorld world({.reads = std::move(reads)});
  run_report_command(directive, bidirectional);
  return world.transcript();
}

// Kept: without a bidirectional connection "ReportLevels" leaves the reasons alone, though
// "ReportStatus" states them.
TEST(ReportCommands, ADirectiveInAnyCaseReportsWhatOneQueryBrings)
{
  struct {
    std::vector<char const*> spellings;
    std::string answered, unanswered, not_bidirectional;
  } const rows[] = {
      {{"ReportStatus", "reportstatus", "REPORTSTATUS", "rEPORTsTATUS"},
       QUERY + REASONS,
       SILENT_QUERY + NO_ANSWER,
       NO_ANSWER},
      {{"ReportLevels", "reportlevels", "REPORTLEVELS", "rEPORTlEVELS"},
       QUERY + LEVELS + REASONS,
       SILENT_QUERY + NO_LEVELS + NO_ANSWER,
       NO_LEVELS},
  };
  for (auto const& row : rows) {
    for (char const* directive : row.spellings) {
      EXPECT_TEXT(run(directive, true, {{REPLY.bytes()}}), row.answered) << directive;
      EXPECT_TEXT(run(directive, true), row.unanswered) << directive;
      EXPECT_TEXT(run(directive, false, {{REPLY.bytes()}}), row.not_bidirectional) << directive;
    }
  }
}

TEST(ReportCommands, APrinterThatNeverWakesIsReportedUnavailable)
{
  StatusReply asleep = REPLY;
  asleep.power = 1;
  std::string const end =
      retry_over_text() + end_text("get_printer_info_retry") + NO_LEVELS + NO_ANSWER;
  std::deque<FakeScript::Read> const replies(61, {asleep.bytes()});
  EXPECT_TRUE(run("ReportLevels", true, replies).ends_with(end));
}

TEST(ReportCommands, AnyOtherDirectiveDoesNothing)
{
  for (char const* directive :
       {"", " ", "Report", "ReportStatu", "ReportStatusX", "ReportLevel", "ReportLevels ",
        " ReportLevels", "ReportStatus\r", "Clean", "AutoConfigure", "PrintSelfTestPage",
        "ReportLevels ReportStatus", "\xc3\xa9"}) {
    EXPECT_TEXT(run(directive, true, {{REPLY.bytes()}}), "") << directive;
    EXPECT_TEXT(run(directive, false), "") << directive;
  }
}

TEST(ReportCommands, EveryDirectiveAsksAnew)
{
  FakeWorld world({.reads = {{REPLY.bytes()}, {REPLY.bytes()}, {REPLY.bytes()}}});
  run_report_command("ReportStatus", true);
  run_report_command("ReportStatus", true);
  run_report_command("ReportLevels", true);
  std::string const status = QUERY + REASONS;
  EXPECT_TEXT(world.transcript(), status + status + QUERY + LEVELS + REASONS);
}

TEST(ReportCommands, AnExhaustedRibbonIsAReasonAndALevel)
{
  StatusReply exhausted = REPLY;
  exhausted.remaining = 0;
  std::string const text = run("ReportLevels", true, {{exhausted.bytes()}});
  EXPECT_TRUE(text.ends_with("ATTR: marker-types=ink-ribbon\n" + reasons_text(5)));
  EXPECT_NE(text.find("ATTR: marker-levels=0\n"), std::string::npos);
}

}  // namespace
