// A backend that answers wrongly, late or not at all, and a printer that does not stop talking.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

constexpr StatusReply GOOD{};

std::string ok_drain() { return side_channel_frame(SC_DRAIN_OUTPUT, SC_OK); }
std::string ok_probe() { return side_channel_frame(SC_GET_BIDI, SC_OK, "\x01"); }

// What a backend sends instead of an answer, and what the library makes of it.
struct Answer {
  char const* name;
  Feed probe;
  Feed drain;
  char const* status;
};

std::vector<Answer> hostile_answers()
{
  std::string const longest(65535, '\x01');
  return {
      {"silence", silence(), silence(), "CUPS_SC_STATUS_TIMEOUT(3)"},
      {"one byte", {"\x03"}, {"\x02"}, "CUPS_SC_STATUS_TIMEOUT(3)"},
      {"two bytes", {"\x03\x01"}, {"\x02\x01"}, "CUPS_SC_STATUS_TIMEOUT(3)"},
      {"the other command", {ok_drain()}, {ok_probe()}, "CUPS_SC_STATUS_BAD_MESSAGE(5)"},
      {"no command", {std::string(64, '\0')}, {std::string(64, '\0')}, "CUPS_SC_STATUS_TIMEOUT(3)"},
      {"65,535 bytes",
       {side_channel_frame(SC_GET_BIDI, SC_OK, longest)},
       {side_channel_frame(SC_DRAIN_OUTPUT, SC_OK, longest)},
       "CUPS_SC_STATUS_TOO_BIG(6)"},
      {"a head without its data",
       {std::string("\x03\x01\x00\x01", 4)},
       {std::string("\x02\x01\x00\x01", 4)},
       "CUPS_SC_STATUS_TOO_BIG(6)"},
      {"the other answer before its own",
       {ok_drain() + ok_probe()},
       {ok_probe() + ok_drain()},
       "CUPS_SC_STATUS_BAD_MESSAGE(5)"},
  };
}

Transcript report_status(PrinterScript const& script)
{
  return run_commands("ReportStatus\n", script);
}

TEST(SideChannel, HostileAnswerToTheProbeIsNotBidirectional)
{
  for (Answer const& answer : hostile_answers()) {
    SCOPED_TRACE(answer.name);
    PrinterScript script;
    script.probe = answer.probe;
    Transcript const run = report_status(script);
    EXPECT_TEXT(run.messages, not_bidirectional_text(answer.status) + wake_up_text()
                                  + directive_text("ReportStatus", 1) + unavailable_reasons_text());
    EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
  }
}

TEST(SideChannel, HostileAnswerToEveryDrainIsOnlyLogged)
{
  for (Answer const& answer : hostile_answers()) {
    SCOPED_TRACE(answer.name);
    PrinterScript script;
    script.drains = {answer.drain, answer.drain};
    script.replies = {{{GOOD.bytes()}}};
    Transcript const run = report_status(script);
    std::string const drain = failed_drain_text(answer.status);
    EXPECT_TEXT(run.messages, wake_up_text(drain) + directive_text("ReportStatus", 1)
                                  + retry_text(attempt_text(query_text(GOOD.bytes(), drain),
                                                            GOOD.info_text(), "fulfilled(0/60)"))
                                  + reasons_text());
    EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
  }
}

TEST(SideChannel, ItsEndIsATimeoutOfEveryRequestAfterIt)
{
  PrinterScript script;
  script.drains = {channel_end()};
  script.replies = {{{GOOD.bytes()}}};
  Transcript const run = report_status(script);
  std::string const drain = failed_drain_text("CUPS_SC_STATUS_TIMEOUT(3)");
  EXPECT_TEXT(run.messages, wake_up_text(drain) + directive_text("ReportStatus", 1)
                                + retry_text(attempt_text(query_text(GOOD.bytes(), drain),
                                                          GOOD.info_text(), "fulfilled(0/60)"))
                                + reasons_text());
}

// One read of the library takes all that is there and drops what follows the first answer.
TEST(SideChannel, OfGluedAnswersTheFirstCounts)
{
  PrinterScript script;
  script.probe = {ok_probe() + ok_drain() + ok_drain()};
  script.drains = {{ok_drain() + ok_drain()}};
  script.replies = {{{GOOD.bytes()}}};
  Transcript const run = report_status(script);
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1) + awake_text(GOOD)
                                + reasons_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events() + exit_event(0));
}

TEST(SideChannel, DataThatComesAfterItsHeadSpoilsTheNextAnswerOnly)
{
  PrinterScript script;
  script.probe = {std::string("\x03\x01\x00\x01", 4)};
  script.drains = {{"\x01" + ok_drain()}};
  Transcript const run = report_status(script);
  EXPECT_TEXT(run.messages, not_bidirectional_text("CUPS_SC_STATUS_TOO_BIG(6)")
                                + wake_up_text(failed_drain_text("CUPS_SC_STATUS_BAD_MESSAGE(5)"))
                                + directive_text("ReportStatus", 1) + unavailable_reasons_text());
}

// --- A printer that sends more than it is asked for ---

constexpr int FLOODED = 117;  // 512 bytes each fill most of a pipe

std::string flood_of(StatusReply const& reply) { return repeated(FLOODED, reply.bytes(512)); }

TEST(BackChannel, FloodIsTakenBufferByBuffer)
{
  PrinterScript script;
  script.replies = {{{flood_of(GOOD)}}};
  Transcript const run = run_commands(repeated(FLOODED, "ReportStatus\n"), script);
  std::string messages = wake_up_text();
  for (int line = 1; line <= FLOODED; ++line)
    messages +=
        directive_text("ReportStatus", line)
        + retry_text(attempt_text(query_text(GOOD.bytes(512)), GOOD.info_text(), "fulfilled(0/60)"))
        + reasons_text();
  EXPECT_TEXT(run.messages, messages);
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events(1)
                              + repeated(FLOODED - 1, query_events(0)) + exit_event(0));
}

TEST(BackChannel, FloodOfASleepingPrinterEndsTheRetriesAllTheSame)
{
  StatusReply const asleep{.power = 0x01};
  PrinterScript script;
  script.replies = {{{flood_of(asleep)}}};
  Transcript const run = report_status(script);
  std::string attempts;
  for (int count = 1; count <= 61; ++count)
    attempts +=
        attempt_text(query_text(asleep.bytes(512)), asleep.info_text(),
                     (count <= 60 ? "retrying(" : "expired(") + std::to_string(count) + "/60)");
  EXPECT_TEXT(run.messages, wake_up_text() + directive_text("ReportStatus", 1)
                                + retry_text(attempts + "DEBUG: #retry over\n")
                                + unavailable_reasons_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query_events(1)
                              + repeated(60, "sleep 1\n" + query_events(0)) + exit_event(0));
}

}  // namespace
