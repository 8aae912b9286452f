// What the directives report when the printer cannot answer: it is woken but never asked.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

Transcript run_one_way(std::string const& commands)
{
  PrinterScript script;
  script.probe = {side_channel_frame(SC_GET_BIDI, SC_OK, std::string("\0", 1))};
  script.replies = {{{StatusReply{}.bytes()}}};
  return run_commands(commands, script);
}

void expect_run(std::string const& commands, std::string const& reports)
{
  Transcript const run = run_one_way(commands);
  EXPECT_TEXT(run.messages,
              not_bidirectional_text("CUPS_SC_STATUS_OK(1)") + wake_up_text() + reports);
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(NotBidirectional, LevelsAreUnavailableAndReasonsStayAsTheyAre)
{
  expect_run("ReportLevels\n", directive_text("ReportLevels", 1) + unavailable_levels_text());
}

TEST(NotBidirectional, StatusIsUnavailable)
{
  expect_run("ReportStatus\n", directive_text("ReportStatus", 1) + unavailable_reasons_text());
}

TEST(NotBidirectional, EachDirectiveReportsForItself)
{
  expect_run("ReportStatus\nReportLevels\nClean\nreportSTATUS\n",
             directive_text("ReportStatus", 1) + unavailable_reasons_text()
                 + directive_text("ReportLevels", 2) + unavailable_levels_text()
                 + directive_text("Clean", 3) + directive_text("reportSTATUS", 4)
                 + unavailable_reasons_text());
}

}  // namespace
