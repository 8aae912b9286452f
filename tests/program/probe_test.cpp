// Which answers to the probe make the connection bidirectional, and what the others leave.
#include <gtest/gtest.h>

#include "tests/harness/run_filter.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/run_text.h"

namespace {

Transcript run_after_probe(Feed const& probe)
{
  PrinterScript script;
  script.probe = probe;
  return run_commands("", script);
}

void expect_not_bidirectional(Feed const& probe, std::string const& status)
{
  Transcript const run = run_after_probe(probe);
  EXPECT_TEXT(run.messages, not_bidirectional_text(status) + wake_up_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(Probe, OneByteOfOneIsBidirectionalAndLeavesNoLine)
{
  Transcript const run = run_after_probe({side_channel_frame(SC_GET_BIDI, SC_OK, "\x01")});
  EXPECT_TEXT(run.messages, wake_up_text());
  EXPECT_TEXT(run.events, probe_events() + wake_up_events() + exit_event(0));
}

TEST(Probe, OtherDataOfAnOkAnswerIsNotBidirectional)
{
  for (std::string const& data :
       {std::string("\0", 1), std::string("\x02"), std::string("\xff"), std::string(""),
        std::string("\x01\x01"), std::string("\x01\0", 2), std::string(512, '\x01')}) {
    SCOPED_TRACE(testing::PrintToString(data));
    expect_not_bidirectional({side_channel_frame(SC_GET_BIDI, SC_OK, data)},
                             "CUPS_SC_STATUS_OK(1)");
  }
}

TEST(Probe, EveryOtherStatusIsNamedAndNotBidirectional)
{
  for (int status : {0, 2, 3, 4, 5, 6, 7, 8, 127, 128, 255}) {
    SCOPED_TRACE(status);
    expect_not_bidirectional({side_channel_frame(SC_GET_BIDI, status, "\x01")},
                             answered_status_text(status));
  }
}

TEST(Probe, AnswerToAnotherCommandIsABadMessage)
{
  expect_not_bidirectional({side_channel_frame(SC_DRAIN_OUTPUT, SC_OK, "\x01")},
                           "CUPS_SC_STATUS_BAD_MESSAGE(5)");
}

TEST(Probe, AnswerLargerThanTheBufferIsTooBig)
{
  expect_not_bidirectional({side_channel_frame(SC_GET_BIDI, SC_OK, std::string(513, '\x01'))},
                           "CUPS_SC_STATUS_TOO_BIG(6)");
}

TEST(Probe, SilenceIsATimeoutAfterHalfAMinute)
{
  expect_not_bidirectional(silence(), "CUPS_SC_STATUS_TIMEOUT(3)");
}

// libcups reports an answer that it cannot read at all like one that did not come.
TEST(Probe, AnswerShorterThanItsHeadOrToNoCommandIsATimeout)
{
  expect_not_bidirectional({"\x03\x01"}, "CUPS_SC_STATUS_TIMEOUT(3)");
  expect_not_bidirectional({side_channel_frame(0x7f, SC_OK, "\x01")}, "CUPS_SC_STATUS_TIMEOUT(3)");
}

// The drain's request meets a channel that nobody reads any more: the signal that would end
// the process must not.
TEST(Probe, EndedSideChannelIsATimeoutThereAndAtTheDrain)
{
  Transcript const run = run_after_probe(channel_end());
  EXPECT_TEXT(run.messages, not_bidirectional_text("CUPS_SC_STATUS_TIMEOUT(3)")
                                + wake_up_text(failed_drain_text("CUPS_SC_STATUS_TIMEOUT(3)")));
  EXPECT_TEXT(run.events, probe_events() + "device 1b 45 57 55\nusleep 500000\n" + exit_event(0));
}

}  // namespace
