// The query that is repeated once a second until the printer is awake.
#include <gtest/gtest.h>

#include <string>

#include "protocol/queries.h"
#include "tests/harness/fake_world.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/exchange_calls.h"
#include "tests/oracle/run_text.h"

namespace {

std::string const UNAVAILABLE = "UNAVAILABLE";

std::string const RETRY_START = start_text("get_printer_info_retry");
std::string const RETRY_END = end_text("get_printer_info_retry");

std::string const AWAKE = StatusReply{}.bytes();
std::string const ASLEEP = StatusReply{.power = 1}.bytes();

// What one attempt with a reply writes; `counter` is the counter's text after it.
std::string attempt(std::string const& reply, std::string const& counter)
{
  return attempt_text(status_query_with_calls(reply), read_status(reply).info_text(), counter);
}

// This many attempts with a sleeping printer, a second's pause after each.
std::string asleep_attempts(int count)
{
  std::string text;
  for (int i = 1; i <= count; i++) {
    text += attempt(ASLEEP, "retrying(" + std::to_string(i) + "/60)") + "> sleep(1)\n";
  }
  return text;
}

void fall_asleep(FakeWorld& world, int replies)
{
  for (int i = 0; i < replies; i++) world.reads.push_back({ASLEEP});
}

TEST(GetPrinterInfoRetry, AnAwakePrinterIsAskedOnceWithoutAPause)
{
  FakeWorld world;
  world.reads = {{AWAKE}, {"not read"}};
  EXPECT_TRUE(get_printer_info_retry().isWakeUp());
  EXPECT_TEXT(world.transcript(), RETRY_START + attempt(AWAKE, "fulfilled(0/60)") + RETRY_END);
}

TEST(GetPrinterInfoRetry, ASleepingPrinterIsAskedOnceASecondUntilItIsAwake)
{
  for (int asleep : {1, 2, 59, 60}) {
    FakeWorld world;
    fall_asleep(world, asleep);
    world.reads.push_back({AWAKE});
    EXPECT_TRUE(get_printer_info_retry().isWakeUp());
    EXPECT_TEXT(world.transcript(),
                RETRY_START + asleep_attempts(asleep)
                    + attempt(AWAKE, "fulfilled(" + std::to_string(asleep) + "/60)") + RETRY_END);
  }
}

TEST(GetPrinterInfoRetry, ThePrinterIsGivenUpAfter61Attempts)
{
  FakeWorld world;
  fall_asleep(world, 61);
  world.reads.push_back({AWAKE});
  EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
  EXPECT_TEXT(world.transcript(), RETRY_START + asleep_attempts(60)
                                      + attempt(ASLEEP, "expired(61/60)") + "DEBUG: #retry over\n"
                                      + RETRY_END);
}

TEST(GetPrinterInfoRetry, EveryCallCountsAnew)
{
  FakeWorld world;
  for (int call = 0; call < 2; call++) {
    fall_asleep(world, 2);
    world.reads.push_back({AWAKE});
    get_printer_info_retry();
    EXPECT_TEXT(world.transcript(),
                RETRY_START + asleep_attempts(2) + attempt(AWAKE, "fulfilled(2/60)") + RETRY_END);
  }
}

TEST(GetPrinterInfoRetry, AnInterruptedPauseIsNotMadeUpFor)
{
  FakeWorld world;
  world.unslept = 1;
  fall_asleep(world, 1);
  world.reads.push_back({AWAKE});
  EXPECT_TRUE(get_printer_info_retry().isWakeUp());
  EXPECT_TEXT(world.transcript(),
              RETRY_START + asleep_attempts(1) + attempt(AWAKE, "fulfilled(1/60)") + RETRY_END);
}

TEST(GetPrinterInfoRetry, OnlyThePowerStateDecides)
{
  FakeWorld world;
  StatusReply const broken = {
      .mech = {0xff, 0xff}, .memory = 0xff, .error = {6, 2, 2}, .total = 0, .remaining = 0};
  world.reads = {{broken.bytes()}};
  EXPECT_TRUE(get_printer_info_retry().isAvailable());
  EXPECT_NE(world.transcript().find("wake_up=fulfilled(0/60)]"), std::string::npos);
}

// What a failed attempt writes, and the rest of the call.
std::string failed_attempt(std::string const& rest)
{
  return failed_attempt_text(failed_status_query_with_calls(rest)) + RETRY_END;
}

// Whichever attempt fails, and at whichever call, there is no further one.
TEST(GetPrinterInfoRetry, AFailedAttemptEndsItAtOnce)
{
  for (int before : {0, 1, 2, 30, 60}) {
    auto const nth = static_cast<std::size_t>(before);
    FakeWorld world;

    fall_asleep(world, before);
    world.fwrite_results.assign(nth, 4);
    world.fwrite_results.push_back(2);
    EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(),
                RETRY_START + asleep_attempts(before) + failed_attempt(failed_write_text(2)));

    fall_asleep(world, before);
    world.fflush_results.assign(nth, 0);
    world.fflush_results.push_back(-1);
    EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(), RETRY_START + asleep_attempts(before)
                                        + failed_attempt(FLUSH_CALL + failed_flush_text()));

    fall_asleep(world, before);
    world.drain_statuses.assign(nth, 1);
    world.drain_statuses.push_back(2);
    world.reads.push_back({"", -1});
    EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(),
                RETRY_START + asleep_attempts(before)
                    + failed_attempt(FLUSH_CALL + DRAIN_CALL
                                     + failed_drain_text(side_channel_status_text(2))
                                     + read_call(512) + failed_read_text(-1)));
  }
}

}  // namespace
