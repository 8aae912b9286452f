// How a status reply is collected: its pieces, its length, its absence.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

constexpr StatusReply GOOD{};

Transcript report_status(std::vector<Reply> const& replies, std::vector<Feed> const& drains = {},
                         std::string const& commands = "ReportStatus\n")
{
  PrinterScript script;
  script.replies = replies;
  script.drains = drains;
  return run_commands(commands, script);
}

// One directive whose one query received all of `reply`.
std::string reported_text(std::string const& reply, int line = 1)
{
  return directive_text("ReportStatus", line)
         + retry_text(attempt_text(query_text(reply), GOOD.info_text(), "fulfilled(0/60)"))
         + reasons_text();
}

std::string unreported_text(long read_result, int line = 1)
{
  return directive_text("ReportStatus", line) + no_reply_text(read_result)
         + unavailable_reasons_text();
}

void expect_query(Transcript const& run, std::string const& text, int reads)
{
  EXPECT_TEXT(run.messages, wake_up_text() + text);
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events(reads) + exit_event(0));
}

TEST(Query, ReplyInEveryPairOfFragmentsIsTheSameReply)
{
  std::string const reply = GOOD.bytes();
  for (size_t cut = 1; cut < reply.size(); ++cut) {
    SCOPED_TRACE(cut);
    expect_query(report_status({{{reply.substr(0, cut)}, {reply.substr(cut)}}}),
                 reported_text(reply), 2);
  }
}

TEST(Query, ReplyByteByByteIsTheSameReply)
{
  std::string const reply = GOOD.bytes();
  Reply bytes;
  for (char byte : reply) bytes.push_back({{byte}});
  expect_query(report_status({bytes}), reported_text(reply), 192);
}

TEST(Query, LongerReplyIsDumpedWhole)
{
  for (size_t length : {193U, 300U, 511U, 512U}) {
    SCOPED_TRACE(length);
    std::string const reply = GOOD.bytes(length);
    expect_query(report_status({{{reply}}}), reported_text(reply), 1);
  }
}

TEST(Query, LastFragmentMayBringMoreThanIsNeeded)
{
  std::string const reply = GOOD.bytes(600);
  expect_query(report_status({{{reply.substr(0, 191)}, {reply.substr(191, 321)}}}),
               reported_text(reply.substr(0, 512)), 2);
}

TEST(Query, BytesBeyondTheBufferBelongToTheNextQuery)
{
  std::string const next = GOOD.bytes();
  std::string const first = GOOD.bytes(512) + next.substr(0, 88);
  Transcript const run =
      report_status({{{first}}, {{next.substr(88)}}}, {}, "ReportStatus\nReportStatus\n");
  EXPECT_TEXT(run.messages,
              wake_up_text() + reported_text(first.substr(0, 512), 1) + reported_text(next, 2));
  EXPECT_TEXT(run.events,
              probe_events() + wake_up_events() + query_events() + query_events() + exit_event(0));
}

TEST(Query, RoomIsOnlyWhatThePartialReplyLeaves)
{
  std::string const reply = GOOD.bytes(600);
  Transcript const run = report_status({{{reply.substr(0, 100)}, {reply.substr(100)}}, {}}, {},
                                       "ReportStatus\nReportStatus\n");
  EXPECT_TEXT(run.messages,
              wake_up_text() + reported_text(reply.substr(0, 512), 1) + unreported_text(-1, 2));
}

TEST(Query, LateReplyIsReadByTheNextQuery)
{
  std::string const late = GOOD.bytes();
  Transcript const run = report_status({{silence()}, {{late}}}, {}, "ReportStatus\nReportStatus\n");
  EXPECT_TEXT(run.messages, wake_up_text() + unreported_text(-1, 1) + reported_text(late, 2));
}

TEST(Query, SilenceOfOneSecondFailsAtOnce)
{
  expect_query(report_status({{silence(), {GOOD.bytes()}}}), unreported_text(-1), 1);
}

TEST(Query, ShortReplyFailsAtTheNextReadAndIsNotDumped)
{
  for (size_t length : {1U, 20U, 152U, 191U}) {
    SCOPED_TRACE(length);
    expect_query(report_status({{{GOOD.bytes().substr(0, length)}, silence()}}),
                 unreported_text(-1), 2);
  }
}

TEST(Query, EndOfTheBackChannelFailsWithZero)
{
  expect_query(report_status({{channel_end()}}), unreported_text(0), 1);
  expect_query(report_status({{{GOOD.bytes().substr(0, 191)}, channel_end()}}), unreported_text(0),
               2);
}

TEST(Query, ReplyBeforeTheEndOfTheBackChannelCounts)
{
  expect_query(report_status({{{GOOD.bytes(), true}}}), reported_text(GOOD.bytes()), 1);
}

TEST(Query, PartialReplyIsNotCarriedIntoTheNext)
{
  Transcript const run = report_status({{{std::string(100, '\xee')}, silence()}, {{GOOD.bytes()}}},
                                       {}, "ReportStatus\nReportStatus\n");
  EXPECT_TEXT(run.messages,
              wake_up_text() + unreported_text(-1, 1) + reported_text(GOOD.bytes(), 2));
}

void expect_drain_is_only_logged(Feed const& drain, std::string const& status)
{
  SCOPED_TRACE(status);
  Feed const wake_ups_drain{side_channel_frame(SC_DRAIN_OUTPUT, SC_OK)};
  Transcript const run = report_status({{{GOOD.bytes()}}}, {wake_ups_drain, drain});
  std::string const query = query_text(GOOD.bytes(), failed_drain_text(status));
  expect_query(run,
               directive_text("ReportStatus", 1)
                   + retry_text(attempt_text(query, GOOD.info_text(), "fulfilled(0/60)"))
                   + reasons_text(),
               1);
}

TEST(Query, FailedDrainIsOnlyLoggedAndTheReplyIsRead)
{
  auto const drain = [](int status) { return Feed{side_channel_frame(SC_DRAIN_OUTPUT, status)}; };
  for (int status : {0, 2, 3, 4, 5, 6, 7, 8, 255})
    expect_drain_is_only_logged(drain(status), answered_status_text(status));
  expect_drain_is_only_logged({side_channel_frame(SC_GET_BIDI, SC_OK)},
                              "CUPS_SC_STATUS_BAD_MESSAGE(5)");
  expect_drain_is_only_logged(silence(), "CUPS_SC_STATUS_TIMEOUT(3)");
  expect_drain_is_only_logged(channel_end(), "CUPS_SC_STATUS_TIMEOUT(3)");
}

TEST(Query, DataOfTheDrainsAnswerIsOverwrittenByTheReply)
{
  Feed const drain{side_channel_frame(SC_DRAIN_OUTPUT, SC_OK, std::string(512, '\xff'))};
  expect_query(report_status({{{GOOD.bytes()}}}, {drain, drain}), reported_text(GOOD.bytes()), 1);
}

TEST(Query, DeviceStreamThatDiesAfterTheWakeUpLeavesThePrinterUnavailable)
{
  PrinterScript script;
  script.hangs_up_after_wake_up = true;
  Transcript const run = run_commands("ReportStatus\nReportLevels\n", script);
  std::string const no_query =
      retry_text(failed_attempt_text(failed_query_text(failed_flush_text())));
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1) + no_query
                                + unavailable_reasons_text() + directive_text("ReportLevels", 2)
                                + no_query + unavailable_levels_text()
                                + unavailable_reasons_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

}  // namespace
