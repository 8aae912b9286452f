// The exchange with the printer: its calls, their arguments, its messages, their order.
#include "protocol/device_channel.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/same_text.h"
#include "tests/oracle/told_world.h"

namespace {

// Calls, messages and result of the wake-up are as told.
void expect_wake_up(FakeScript const& script, int result)
{
  bool awake = false;
  std::string const transcript =
      told(script, [&](Surroundings const& outside) { awake = tell_wake_up(outside); });
  EXPECT_EQ(awake, result == 0);
  FakeWorld world(script);
  EXPECT_EQ(wr_esc_wakeup(), result);
  EXPECT_TEXT(world.transcript(), transcript);
}

// The same of any use; its bytes are `reply`.
void expect_exchange(Exchange const& use, FakeScript const& script, std::string const& reply = "")
{
  std::optional<std::string> bytes;
  std::string const transcript = told(script, [&](Surroundings const& outside) {
    bytes =
        tell_exchange(outside, {use.name, use.command, static_cast<std::size_t>(use.minimum_reply),
                                static_cast<long>(use.pause)});
  });
  EXPECT_EQ(bytes, reply);
  FakeWorld world(script);
  ReplyBuffer buffer;
  EXPECT_TRUE(run_exchange(use, buffer));
  EXPECT_TEXT(world.transcript(), transcript);
  EXPECT_EQ(std::string(buffer.data(), reply.size()), reply);
}

// Written out once, so that the fake world shows what it is asked.
TEST(WakeUp, WritesFlushesDrainsAndPauses)
{
  FakeWorld world;
  EXPECT_EQ(wr_esc_wakeup(), 0);
  EXPECT_TEXT(world.transcript(),
              "DEBUG: wr_esc_wakeup() START\n"
              "DEBUG: [CMD] size=4\n"
              "DEBUG: [CMD] 0000: 1b 45 57 55\n"
              "> fwrite(1 x 4: 1b 45 57 55)\n"
              "> fflush(stdout)\n"
              "> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n"
              "> usleep(500000)\n"
              "DEBUG: wr_esc_wakeup() END\n");
}

TEST(WakeUp, AShortWriteFailsBeforeTheFlush)
{
  for (std::size_t written : {0U, 1U, 2U, 3U}) expect_wake_up({.writes = {written}}, -1);
}

TEST(WakeUp, AFailedFlushFailsBeforeTheDrain)
{
  for (int result : {-1, 1}) expect_wake_up({.flushes = {result}}, -1);
}

TEST(WakeUp, AFailedDrainIsOnlyLoggedByNameAndNumber)
{
  for (int status : {0, 2, 3, 4, 5, 6, 7, 8, 127, 255, -1, -128})
    expect_wake_up({.drains = {status}}, 0);
}

TEST(WakeUp, EveryMessageGoesOutInWholeLines)
{
  FakeWorld world({.drains = {3}});
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
  FakeScript script;
  std::string sent(512, '\0');
  for (std::size_t i = 0; i < sent.size(); ++i) {
    sent[i] = static_cast<char>(i % 251);
    script.reads.push_back({std::string(1, sent[i])});
  }
  expect_exchange({"whole_buffer", {"?", 1}, 512, 0}, script, sent);
}

TEST(Exchange, EveryPauseButNoneIsMade)
{
  for (unsigned pause : {0U, 1U, 2U}) expect_exchange({"pausing", {"?", 1}, 0, pause}, {});
}

TEST(Exchange, WhatTheDrainBringsIsOverwrittenByTheReply)
{
  std::string const sent = std::string(10, 'a') + std::string(10, 'b');
  expect_exchange(
      JOB_STATUS,
      {.reads = {{sent.substr(0, 10)}, {sent.substr(10)}}, .drain_data = std::string(512, '\xee')},
      sent);
}

TEST(Exchange, WhatTheBufferCannotHoldStaysInTheBackChannel)
{
  FakeWorld world({.reads = {{std::string(512, 'a') + std::string(192, 'b')}}});
  ReplyBuffer reply;
  EXPECT_TRUE(run_exchange(PRINTER_STATUS, reply));
  EXPECT_EQ(std::string(reply.data(), reply.size()), std::string(512, 'a'));
  EXPECT_TRUE(run_exchange(PRINTER_STATUS, reply));
  EXPECT_EQ(std::string(reply.data(), 192), std::string(192, 'b'));
}

}  // namespace
