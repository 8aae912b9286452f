// The exchange with the printer: its calls, their arguments, its messages, their order.
#include "protocol/device_channel.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/fake_world.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/exchange_calls.h"
#include "tests/oracle/run_text.h"

namespace {

std::string const WAKE_UP_START =
    command_start_text("wr_esc_wakeup", "\033EWU") + write_call("\033EWU");
std::string const WAKE_UP_END = "> usleep(500000)\n" + end_text("wr_esc_wakeup");

TEST(WakeUp, WritesFlushesDrainsAndPauses)
{
  FakeWorld world;
  EXPECT_EQ(wr_esc_wakeup(), 0);
  EXPECT_TEXT(world.transcript(), WAKE_UP_START + FLUSH_CALL + DRAIN_CALL + WAKE_UP_END);
}

TEST(WakeUp, AShortWriteFailsBeforeTheFlush)
{
  for (std::size_t written : {0u, 1u, 2u, 3u}) {
    FakeWorld world;
    world.fwrite_results = {written};
    EXPECT_EQ(wr_esc_wakeup(), -1);
    EXPECT_TEXT(world.transcript(), WAKE_UP_START + failed_write_text(static_cast<long>(written))
                                        + end_text("wr_esc_wakeup"));
  }
}

TEST(WakeUp, AFailedFlushFailsBeforeTheDrain)
{
  for (int result : {-1, 1}) {
    FakeWorld world;
    world.fflush_results = {result};
    EXPECT_EQ(wr_esc_wakeup(), -1);
    EXPECT_TEXT(world.transcript(),
                WAKE_UP_START + FLUSH_CALL + failed_flush_text() + end_text("wr_esc_wakeup"));
  }
}

TEST(WakeUp, AFailedDrainIsOnlyLoggedByNameAndNumber)
{
  for (int status : {0, 2, 3, 4, 5, 6, 7, 8, 127, 255, -1, -128}) {
    FakeWorld world;
    world.drain_statuses = {status};
    EXPECT_EQ(wr_esc_wakeup(), 0);
    EXPECT_TEXT(world.transcript(), WAKE_UP_START + FLUSH_CALL + DRAIN_CALL
                                        + failed_drain_text(side_channel_status_text(status))
                                        + WAKE_UP_END);
  }
}

TEST(WakeUp, EveryMessageGoesOutInWholeLines)
{
  FakeWorld world;
  world.drain_statuses = {3};
  StderrWrites capture;
  wr_esc_wakeup();
  std::vector<std::string> const writes = capture.take();
  EXPECT_EQ(writes.size(), 4u);
  for (std::string const& text : writes) EXPECT_TRUE(text.ends_with("\n")) << text;
}

TEST(Exchange, UsesDifferByTheirRowOfConstants)
{
  using namespace std::string_view_literals;
  EXPECT_EQ(WAKE_UP.command, "\x1b\x45\x57\x55"sv);
  EXPECT_EQ(PRINTER_STATUS.command, "\x1b\x56\x32\x31"sv);
  EXPECT_EQ(JOB_STATUS.command, "\x1b\x56\x31\x30\x00\x00"sv);
  EXPECT_EQ(WAKE_UP.minimum_reply, 0);
  EXPECT_EQ(PRINTER_STATUS.minimum_reply, 192);
  EXPECT_EQ(JOB_STATUS.minimum_reply, 20);
}

// One byte a read, until the buffer is full: the room shrinks with every byte.
TEST(Exchange, AReadIsOfferedOnlyTheRoomThatIsLeft)
{
  static constexpr Exchange whole_buffer{"whole_buffer", {"?", 1}, 512, 0};
  FakeWorld world;
  std::string sent(512, '\0');
  std::string expected =
      command_start_text("whole_buffer", "?") + write_call("?") + FLUSH_CALL + DRAIN_CALL;
  for (std::size_t i = 0; i < sent.size(); i++) {
    sent[i] = static_cast<char>(i % 251);
    world.reads.push_back({std::string(1, sent[i])});
    expected += read_call(512 - i);
  }
  expected += dump_text("[STS]", sent) + end_text("whole_buffer");

  ReplyBuffer reply;
  EXPECT_TRUE(run_exchange(whole_buffer, reply));
  EXPECT_EQ(std::string(reply.data(), reply.size()), sent);
  EXPECT_TEXT(world.transcript(), expected);
}

TEST(Exchange, EveryPauseButNoneIsMade)
{
  for (unsigned pause : {0u, 1u, 2u}) {
    Exchange const pausing{"pausing", {"?", 1}, 0, pause};
    FakeWorld world;
    ReplyBuffer reply;
    EXPECT_TRUE(run_exchange(pausing, reply));
    EXPECT_TEXT(world.transcript(),
                command_start_text("pausing", "?") + write_call("?") + FLUSH_CALL + DRAIN_CALL
                    + (pause > 0 ? "> usleep(" + std::to_string(pause) + ")\n" : "")
                    + end_text("pausing"));
  }
}

TEST(Exchange, WhatTheDrainBringsIsOverwrittenByTheReply)
{
  FakeWorld world;
  world.drain_data = std::string(512, '\xee');
  std::string const sent = std::string(10, 'a') + std::string(10, 'b');
  world.reads = {{sent.substr(0, 10)}, {sent.substr(10)}};
  ReplyBuffer reply;
  EXPECT_TRUE(run_exchange(JOB_STATUS, reply));
  EXPECT_EQ(std::string(reply.data(), sent.size()), sent);
}

TEST(Exchange, WhatTheBufferCannotHoldStaysInTheBackChannel)
{
  FakeWorld world;
  world.reads = {{std::string(512, 'a') + std::string(192, 'b')}};
  ReplyBuffer reply;
  EXPECT_TRUE(run_exchange(PRINTER_STATUS, reply));
  EXPECT_EQ(std::string(reply.data(), reply.size()), std::string(512, 'a'));
  EXPECT_TRUE(run_exchange(PRINTER_STATUS, reply));
  EXPECT_EQ(std::string(reply.data(), 192), std::string(192, 'b'));
}

}  // namespace
