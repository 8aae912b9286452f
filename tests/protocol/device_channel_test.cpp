// The exchange with the printer: its calls, their arguments, its messages, their order.
#include "protocol/device_channel.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/oracle/expected_texts.h"
#include "tests/harness/fake_world.h"

namespace {

std::string const WAKE_UP_START =
    "DEBUG: wr_esc_wakeup() START\n"
    "DEBUG: [CMD] size=4\n"
    "DEBUG: [CMD] 0000: 1b 45 57 55\n"
    "> fwrite(1 x 4: 1b 45 57 55)\n";
std::string const FLUSH = "> fflush(stdout)\n";
std::string const DRAIN = "> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n";
std::string const WAKE_UP_END =
    "> usleep(500000)\n"
    "DEBUG: wr_esc_wakeup() END\n";

TEST(WakeUp, WritesFlushesDrainsAndPauses)
{
  FakeWorld world;
  EXPECT_EQ(wr_esc_wakeup(), 0);
  EXPECT_EQ(world.transcript(), WAKE_UP_START + FLUSH + DRAIN + WAKE_UP_END);
}

TEST(WakeUp, AShortWriteFailsBeforeTheFlush)
{
  for (std::size_t written : {0u, 1u, 2u, 3u}) {
    FakeWorld world;
    world.fwrite_results = {written};
    EXPECT_EQ(wr_esc_wakeup(), -1);
    EXPECT_EQ(world.transcript(), WAKE_UP_START + "DEBUG: fwrite() failed. ret="
                                      + std::to_string(written) + "\nDEBUG: wr_esc_wakeup() END\n");
  }
}

TEST(WakeUp, AFailedFlushFailsBeforeTheDrain)
{
  for (int result : {-1, 1}) {
    FakeWorld world;
    world.fflush_results = {result};
    EXPECT_EQ(wr_esc_wakeup(), -1);
    EXPECT_EQ(world.transcript(), WAKE_UP_START + FLUSH
                                      + "DEBUG: fflush() failed.\n"
                                        "DEBUG: wr_esc_wakeup() END\n");
  }
}

TEST(WakeUp, AFailedDrainIsOnlyLoggedByNameAndNumber)
{
  std::pair<int, char const*> const statuses[] = {
      {0, "CUPS_SC_STATUS_NONE(0)"},
      {2, "CUPS_SC_STATUS_IO_ERROR(2)"},
      {3, "CUPS_SC_STATUS_TIMEOUT(3)"},
      {4, "CUPS_SC_STATUS_NO_RESPONSE(4)"},
      {5, "CUPS_SC_STATUS_BAD_MESSAGE(5)"},
      {6, "CUPS_SC_STATUS_TOO_BIG(6)"},
      {7, "CUPS_SC_STATUS_NOT_IMPLEMENTED(7)"},
      {8, "UNKNOWN(8)"},
      {127, "UNKNOWN(127)"},
      {255, "UNKNOWN(255)"},
      {-1, "UNKNOWN(-1)"},
      {-128, "UNKNOWN(-128)"},
  };
  for (auto const& [status, text] : statuses) {
    FakeWorld world;
    world.drain_statuses = {status};
    EXPECT_EQ(wr_esc_wakeup(), 0);
    EXPECT_EQ(world.transcript(), WAKE_UP_START + FLUSH + DRAIN + "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT="
                                      + text + "\n" + WAKE_UP_END);
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
      "DEBUG: whole_buffer() START\n"
      "DEBUG: [CMD] size=1\n"
      "DEBUG: [CMD] 0000: 3f\n"
      "> fwrite(1 x 1: 3f)\n"
      + FLUSH + DRAIN;
  for (std::size_t i = 0; i < sent.size(); i++) {
    sent[i] = static_cast<char>(i % 251);
    world.reads.push_back({std::string(1, sent[i])});
    expected += "> cupsBackChannelRead(room for " + std::to_string(512 - i) + ", 1.000 s)\n";
  }
  expected += expected_dump("[STS]", sent) + "DEBUG: whole_buffer() END\n";

  ReplyBuffer reply;
  EXPECT_TRUE(run_exchange(whole_buffer, reply));
  EXPECT_EQ(std::string(reply.data(), reply.size()), sent);
  EXPECT_EQ(world.transcript(), expected);
}

TEST(Exchange, EveryPauseButNoneIsMade)
{
  for (unsigned pause : {0u, 1u, 2u}) {
    Exchange const pausing{"pausing", {"?", 1}, 0, pause};
    FakeWorld world;
    ReplyBuffer reply;
    EXPECT_TRUE(run_exchange(pausing, reply));
    EXPECT_EQ(world.transcript(),
              "DEBUG: pausing() START\n"
              "DEBUG: [CMD] size=1\n"
              "DEBUG: [CMD] 0000: 3f\n"
              "> fwrite(1 x 1: 3f)\n"
                  + FLUSH + DRAIN + (pause > 0 ? "> usleep(" + std::to_string(pause) + ")\n" : "")
                  + "DEBUG: pausing() END\n");
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
