// What the backend answers to the probe and to a drain, and what the filter makes of it.
#include <gtest/gtest.h>

#include "tests/program/woken_run.h"

namespace {

constexpr StatusReply GOOD{};
constexpr char const* TIMEOUT = "CUPS_SC_STATUS_TIMEOUT(3)";
constexpr char const* BAD_MESSAGE = "CUPS_SC_STATUS_BAD_MESSAGE(5)";
constexpr char const* TOO_BIG = "CUPS_SC_STATUS_TOO_BIG(6)";

struct Answer {
  std::string name;
  Feed feed;
  std::string status{};  // what the library makes of it when that is not OK
};

std::string ok_probe() { return side_channel_frame(SC_GET_BIDI, SC_OK, "\x01"); }
std::string ok_drain() { return side_channel_frame(SC_DRAIN_OUTPUT, SC_OK); }

// What a backend may send instead of an OK to this command, whose answer brings `data`. libcups
// reports an answer that it cannot read at all like one that did not come.
std::vector<Answer> failed_answers(int command, std::string const& data)
{
  int const other = command == SC_GET_BIDI ? SC_DRAIN_OUTPUT : SC_GET_BIDI;
  auto const ok = [](int of, std::string const& bytes) {
    return side_channel_frame(of, SC_OK, bytes);
  };
  std::vector<Answer> answers{
      {"silence", silence(), TIMEOUT},
      {"one byte", {ok(command, data).substr(0, 1)}, TIMEOUT},
      {"two bytes", {ok(command, data).substr(0, 2)}, TIMEOUT},
      {"a head without its data", {ok(command, "\x01").substr(0, 4)}, TOO_BIG},
      {"an unknown command", {ok(0x7f, data)}, TIMEOUT},
      {"no command", {std::string(64, '\0')}, TIMEOUT},
      {"the other command", {ok(other, "\x01")}, BAD_MESSAGE},
      {"the other command without data", {ok(other, "")}, BAD_MESSAGE},
      {"the other answer before its own", {ok(other, "\x01") + ok(command, data)}, BAD_MESSAGE},
      {"one byte more than the buffer", {ok(command, std::string(513, '\x01'))}, TOO_BIG},
      {"65,535 bytes", {ok(command, std::string(65535, '\x01'))}, TOO_BIG},
  };
  for (int status : {0, 2, 3, 4, 5, 6, 7, 8, 127, 128, 255})
    answers.push_back({"status " + std::to_string(status),
                       {side_channel_frame(command, status, data)},
                       answered_status_text(status)});
  return answers;
}

void expect_not_bidirectional(Feed const& probe, std::string const& status,
                              std::string const& commands, std::string const& reports)
{
  Transcript const run = run_commands(commands, {.probe = probe, .replies = {{{GOOD.bytes()}}}});
  EXPECT_TEXT(run.messages, not_bidirectional_text(status) + wake_up_text() + reports);
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(Probe, FailedAnswerIsNamedAndNotBidirectional)
{
  for (Answer const& answer : failed_answers(SC_GET_BIDI, "\x01")) {
    SCOPED_TRACE(answer.name);
    expect_not_bidirectional(answer.feed, answer.status, "ReportStatus\n",
                             directive_text("ReportStatus", 1) + unavailable_reasons_text());
  }
}

TEST(Probe, OtherDataOfAnOkAnswerIsNotBidirectional)
{
  for (std::string const& data :
       {std::string("\0", 1), std::string("\x02"), std::string("\xff"), std::string(""),
        std::string("\x01\x01"), std::string("\x01\0", 2), std::string(512, '\x01')}) {
    SCOPED_TRACE(testing::PrintToString(data));
    expect_not_bidirectional({side_channel_frame(SC_GET_BIDI, SC_OK, data)}, "CUPS_SC_STATUS_OK(1)",
                             "ReportLevels\n",
                             directive_text("ReportLevels", 1) + unavailable_levels_text());
  }
}

TEST(Probe, EachDirectiveReportsForItselfOnAConnectionThatIsNotBidirectional)
{
  expect_not_bidirectional(silence(), TIMEOUT, "ReportStatus\nReportLevels\nClean\nreportSTATUS\n",
                           directive_text("ReportStatus", 1) + unavailable_reasons_text()
                               + directive_text("ReportLevels", 2) + unavailable_levels_text()
                               + directive_text("Clean", 3) + directive_text("reportSTATUS", 4)
                               + unavailable_reasons_text());
}

// The drain's request meets a channel that nobody reads any more: the signal that would end
// the process must not.
TEST(Probe, EndedSideChannelIsATimeoutThereAndAtTheDrain)
{
  Transcript const run = run_commands("", {.probe = channel_end()});
  EXPECT_TEXT(run.messages,
              not_bidirectional_text(TIMEOUT) + wake_up_text(failed_drain_text(TIMEOUT)));
  EXPECT_TEXT(run.events, probe_events() + "device 1b 45 57 55\nusleep 500000\n" + exit_event(0));
}

TEST(Probe, DataThatComesAfterItsHeadSpoilsTheNextAnswerOnly)
{
  Transcript const run = run_commands(
      "ReportStatus\n", {.probe = {ok_probe().substr(0, 4)}, .drains = {{"\x01" + ok_drain()}}});
  EXPECT_TEXT(run.messages, not_bidirectional_text(TOO_BIG)
                                + wake_up_text(failed_drain_text(BAD_MESSAGE))
                                + directive_text("ReportStatus", 1) + unavailable_reasons_text());
}

// Whatever the drains of the wake-up and of the query give, the reply is read.
void expect_drains(Answer const& of_wake_up, Answer const& of_query,
                   std::string const& query = query_events())
{
  SCOPED_TRACE(of_wake_up.name + ", then " + of_query.name);
  auto const logged = [](std::string const& status) {
    return status.empty() ? "" : failed_drain_text(status);
  };
  // One read of the library takes all that is there and drops what follows the first answer.
  Transcript const run =
      run_commands("ReportStatus\n", {.probe = {ok_probe() + ok_drain() + ok_drain()},
                                      .drains = {of_wake_up.feed, of_query.feed},
                                      .replies = {{{GOOD.bytes()}}}});
  EXPECT_TEXT(run.messages, wake_up_text(logged(of_wake_up.status))
                                + directive_text("ReportStatus", 1)
                                + awake_text(GOOD, logged(of_query.status)) + reasons_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + query + exit_event(0));
}

TEST(Drain, FailedAnswerIsOnlyLogged)
{
  Answer const ok{"OK", {ok_drain()}};
  for (Answer const& answer : failed_answers(SC_DRAIN_OUTPUT, "")) {
    expect_drains(answer, ok);
    expect_drains(ok, answer);
    expect_drains(answer, answer);
  }
}

TEST(Drain, WhatComesWithAnOkIsIgnored)
{
  Answer const data{"data", {side_channel_frame(SC_DRAIN_OUTPUT, SC_OK, std::string(512, '\xff'))}};
  Answer const glued{"two answers", {ok_drain() + ok_drain()}};
  expect_drains(data, data);
  expect_drains(glued, glued);
}

TEST(Drain, EndOfTheSideChannelIsATimeoutOfEveryRequestAfterIt)
{
  Answer const end{"the end", channel_end(), TIMEOUT};
  expect_drains({"OK", {ok_drain()}}, end);
  expect_drains(end, end, "device 1b 56 32 31\nwait 1.000000 s on 3\n");
}

}  // namespace
