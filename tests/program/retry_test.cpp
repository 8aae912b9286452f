// How long the filter goes on asking a printer that is not awake.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

constexpr StatusReply ASLEEP{.power = 0x01};
constexpr StatusReply AWAKE{};

std::string asleep_text(int attempts)
{
  std::string text;
  for (int count = 1; count <= attempts; ++count)
    text += attempt_text(query_text(ASLEEP.bytes()), ASLEEP.info_text(),
                         (count <= 60 ? "retrying(" : "expired(") + std::to_string(count) + "/60)");
  return text;
}

std::string asleep_events(int attempts) { return repeated(attempts, query_events() + "sleep 1\n"); }

// `attempts` replies of a printer that is not awake, and then `last`.
Transcript report_status(size_t attempts, Reply const& last)
{
  PrinterScript script;
  script.replies.assign(attempts, {{ASLEEP.bytes()}});
  script.replies.push_back(last);
  return run_commands("ReportStatus\n", script);
}

TEST(Retry, PrinterThatWakesWithinTheLimitIsReported)
{
  for (int asleep : {1, 2, 59, 60}) {
    SCOPED_TRACE(asleep);
    Transcript const run = report_status(static_cast<size_t>(asleep), {{AWAKE.bytes()}});
    std::string const fulfilled = "fulfilled(" + std::to_string(asleep) + "/60)";
    EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1)
                                  + retry_text(asleep_text(asleep)
                                               + attempt_text(query_text(AWAKE.bytes()),
                                                              AWAKE.info_text(), fulfilled))
                                  + reasons_text());
    EXPECT_TEXT(run.events, probe_events() + wake_up_events() + asleep_events(asleep)
                                + query_events() + exit_event(0));
  }
}

TEST(Retry, TheSixtyFirstReplyOfASleepingPrinterIsTheLastAndIsDiscarded)
{
  Transcript const run = report_status(61, {{AWAKE.bytes()}});
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1)
                                + retry_text(asleep_text(61) + "DEBUG: #retry over\n")
                                + unavailable_reasons_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + asleep_events(60) + query_events()
                              + exit_event(0));
}

TEST(Retry, FailedExchangeAfterSleepingRepliesIsNotRetried)
{
  for (int asleep : {1, 2, 60}) {
    SCOPED_TRACE(asleep);
    Transcript const run = report_status(static_cast<size_t>(asleep), {silence()});
    EXPECT_TEXT(run.messages,
                wake_up_text() + directive_text("ReportStatus", 1)
                    + retry_text(asleep_text(asleep)
                                 + failed_attempt_text(failed_query_text(failed_read_text(-1))))
                    + unavailable_reasons_text());
    EXPECT_TEXT(run.events, probe_events() + wake_up_events() + asleep_events(asleep)
                                + query_events() + exit_event(0));
  }
}

TEST(Retry, EachDirectiveStartsANewCount)
{
  PrinterScript script;
  script.replies = {{{ASLEEP.bytes()}}, {{AWAKE.bytes()}}, {{ASLEEP.bytes()}}, {{AWAKE.bytes()}}};
  Transcript const run = run_commands("ReportStatus\nReportStatus\n", script);
  std::string const report =
      retry_text(asleep_text(1)
                 + attempt_text(query_text(AWAKE.bytes()), AWAKE.info_text(), "fulfilled(1/60)"))
      + reasons_text();
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1) + report
                                + directive_text("ReportStatus", 2) + report);
}

TEST(Retry, AnyPowerStateButZeroIsNotAwake)
{
  for (unsigned power : {0x01U, 0x02U, 0x20U, 0x7fU, 0x80U, 0xffU}) {
    SCOPED_TRACE(power);
    StatusReply const reply{.power = power};
    PrinterScript script;
    script.replies = {{{reply.bytes()}}, {{AWAKE.bytes()}}};
    Transcript const run = run_commands("ReportStatus\n", script);
    EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1)
                                  + retry_text(attempt_text(query_text(reply.bytes()),
                                                            reply.info_text(), "retrying(1/60)")
                                               + attempt_text(query_text(AWAKE.bytes()),
                                                              AWAKE.info_text(), "fulfilled(1/60)"))
                                  + reasons_text());
  }
}

TEST(Retry, ErrorsOfAnAwakePrinterAreNoReasonToAskAgain)
{
  StatusReply const reply{.mech = {0x10, 0xff}, .memory = 0xff, .error = {6, 2, 2}, .remaining = 0};
  PrinterScript script;
  script.replies = {{{reply.bytes()}}};
  Transcript const run = run_commands("ReportStatus\n", script);
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1) + awake_text(reply)
                                + reasons_text(5));
}

}  // namespace
